#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "platform/PowerSources.h"
#include "providers/HistoryRing.h"
#include "runtime/Published.h"
#include "runtime/Task.h"

namespace kestrune {

enum class BatteryCondition { good, fair, poor };

// The key of the text that names the condition: "Good", "Fair" or "Poor".
const char* label(BatteryCondition condition);

struct BatterySnapshot {
  std::int64_t percent = 0;  // of the charge, 0 to 100
  bool isCharging = false;
  bool isFullyCharged = false;
  // Until full while charging, otherwise until empty; absent while it is being estimated.
  std::optional<std::int64_t> timeRemainingMinutes;
  std::int64_t cycleCount = 0;
  std::int64_t healthPercent = 0;  // full capacity relative to design capacity, at most 100
  BatteryCondition condition = BatteryCondition::good;
  std::int64_t voltageMV = 0;
  std::int64_t amperageMa = 0;  // negative while discharging
  std::int64_t currentCapacityMah = 0;
  std::int64_t designCapacityMah = 0;
  std::optional<double> temperatureCelsius;

  // Shown until real data replaces it; stays on a machine without a battery.
  static BatterySnapshot preview();

  // "4h 12m", "45m", or the key of a text: "Fully Charged", "Calculating…".
  std::string timeRemainingText() const;
  // True if the text above is a time, not a key.
  bool tellsTime() const;
};

// Reads the battery once per interval. A machine without one keeps the preview. Main thread only.
class BatteryProvider : public std::enable_shared_from_this<BatteryProvider> {
 public:
  // Reads nothing. Loop and sources must outlive the provider.
  BatteryProvider(MainLoop& loop, platform::PowerSources& sources);
  // Stops polling.
  ~BatteryProvider();
  BatteryProvider(const BatteryProvider&) = delete;
  BatteryProvider& operator=(const BatteryProvider&) = delete;

  // Ticks immediately, then once per interval.
  void start(Duration interval);
  void tick();

  Published<BatterySnapshot> current{BatterySnapshot::preview()};
  Published<HistoryRing<BatterySnapshot>> history{HistoryRing<BatterySnapshot>(60)};
  bool paused = false;  // the polling loop skips its ticks while set

 private:
  std::optional<BatterySnapshot> readBattery();

  MainLoop& loop_;
  platform::PowerSources& sources_;
  Task task_;
};

}  // namespace kestrune
