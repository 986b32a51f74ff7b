#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "platform/Chip.h"
#include "platform/Processors.h"
#include "providers/CPUSnapshot.h"
#include "providers/HistoryRing.h"
#include "providers/ProcessLoads.h"
#include "providers/ProcessScanCache.h"
#include "runtime/Published.h"
#include "runtime/Task.h"

namespace kestrune {

// Fixed facts about the chip.
struct ChipInfo {
  std::string name;  // the processor's brand, or the machine's model if that is empty
  std::int32_t physicalCores = 0;
  // Both are 0 if all cores are of one kind.
  std::int32_t perfCores = 0;
  std::int32_t effCores = 0;

  // "4E + 6P" if the chip has both kinds, otherwise the number of physical cores.
  std::string coreDescription() const;
};

// Samples the load of the machine and of each processor once per interval, keeps the history for the charts,
// and at every third tick scans the processes off the main thread. A failed read repeats the last figures.
// Main thread only.
class CPUProvider : public std::enable_shared_from_this<CPUProvider> {
 public:
  // Reads the chip's facts; takes no sample. Loop, clock and services must outlive the provider.
  CPUProvider(MainLoop& loop, platform::Processors& processors, platform::Chip& chip,
              std::shared_ptr<ProcessScanCache> scans);
  // Stops polling.
  ~CPUProvider();
  CPUProvider(const CPUProvider&) = delete;
  CPUProvider& operator=(const CPUProvider&) = delete;

  // Ticks immediately, then once per interval.
  void start(Duration interval);
  void tick();

  Published<CPUSnapshot> current{CPUSnapshot::demonstration()};
  Published<HistoryRing<CPUSnapshot>> history{HistoryRing<CPUSnapshot>(60)};
  Published<HistoryRing<double>> usageHistory{HistoryRing<double>(86400)};  // usagePercent of each tick
  const ChipInfo chipInfo;
  Published<double> menuBarUsagePercent{0};  // usagePercent of every third tick
  bool paused = false;                       // the polling loop skips its ticks while set

 private:
  struct Load {
    double usage = 0;
    std::vector<double> cores;
  };
  Load sample();
  void startScanIfDue();
  static Task scan(MainLoop& loop, std::weak_ptr<CPUProvider> provider,
                   std::shared_ptr<ProcessScanCache> scans, ProcessTicks previous);

  MainLoop& loop_;
  platform::Processors& processors_;
  std::shared_ptr<ProcessScanCache> scans_;
  Task pollingTask_;
  std::int32_t prevBusy_ = 0;
  std::int32_t prevTotal_ = 0;
  std::vector<std::int32_t> prevCoreBusy_;
  std::vector<std::int32_t> prevCoreTotal_;
  bool prevReady_ = false;
  ProcessTicks prevProcTicks_;
  int menuBarUpdateCount_ = 2;  // so that the first tick already updates the menu bar
  bool isScanning_ = false;
  int pollsSinceLastScan_ = 0;
};

}  // namespace kestrune
