#pragma once

#include <cstdint>
#include <optional>

namespace kestrune::platform {

// The state of the power source. Absent: not reported.
struct PowerSource {
  std::optional<std::int64_t> currentCapacity;  // percent
  std::optional<bool> isCharging;
  std::optional<std::int64_t> timeToEmpty;       // minutes; -1 while it is being estimated
  std::optional<std::int64_t> timeToFullCharge;  // minutes; -1 while it is being estimated
};

// The figures of the battery's hardware. Absent: not reported.
struct BatteryRegistry {
  std::optional<std::int64_t> cycleCount;
  std::optional<std::int64_t> designCapacity;   // mAh
  std::optional<std::int64_t> voltage;          // mV
  std::optional<std::int64_t> instantAmperage;  // mA, negative while discharging
  std::optional<bool> fullyCharged;
  std::optional<std::int64_t> rawMaxCapacity;      // mAh, as measured
  std::optional<std::int64_t> rawCurrentCapacity;  // mAh, as measured
  std::optional<std::int64_t> maxCapacity;         // mAh, for hardware that doesn't measure
  std::optional<std::int64_t> currentCapacity;     // mAh, for hardware that doesn't measure
  std::optional<std::int64_t> temperature;         // hundredths of a degree Celsius
};

// The machine's own battery. Several packs count as one; those of peripherals don't count. Main thread.
class PowerSources {
 public:
  virtual ~PowerSources() = default;
  // Absent: the machine has no battery.
  virtual std::optional<PowerSource> powerSource() = 0;
  // Absent: there is no battery, or it can't be read.
  virtual std::optional<BatteryRegistry> battery() = 0;
};

}  // namespace kestrune::platform
