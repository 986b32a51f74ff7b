#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/Memory.h"
#include "providers/HistoryRing.h"
#include "providers/ProcessScanCache.h"
#include "runtime/Published.h"
#include "runtime/Task.h"

namespace kestrune {

struct MemorySnapshot {
  // By the share of memory in use: warning from 75 percent, critical from 90 percent.
  enum class MemoryPressure { nominal, warning, critical };

  struct ProcessInfo {
    std::int32_t id = 0;
    std::string name;
    std::uint64_t memoryBytes = 0;
  };

  std::uint64_t usedBytes = 0;   // wired, app and compressed memory together
  std::uint64_t totalBytes = 0;  // physical memory; 0: unknown
  MemoryPressure pressure = MemoryPressure::nominal;
  std::uint64_t appBytes = 0;
  std::uint64_t wiredBytes = 0;
  std::uint64_t compressedBytes = 0;
  std::uint64_t swapUsedBytes = 0;
  std::uint64_t swapTotalBytes = 0;
  std::vector<ProcessInfo> topProcesses;  // at most 10, each above 1 MiB, largest first

  // Shown until real data replaces it.
  static MemorySnapshot demonstration();
};

// The name of a level in messages: "nominal", "warning" or "critical".
const char* rawValue(MemorySnapshot::MemoryPressure pressure);

// Nominal if the total is 0.
MemorySnapshot::MemoryPressure memoryPressure(std::uint64_t usedBytes, std::uint64_t totalBytes);

// Samples the memory once per interval, and at every third tick lists the largest processes off the main
// thread. A failed read keeps the last figures. Main thread only.
class MemoryProvider : public std::enable_shared_from_this<MemoryProvider> {
 public:
  // Takes no sample. Loop and memory must outlive the provider.
  MemoryProvider(MainLoop& loop, platform::Memory& memory, std::shared_ptr<ProcessScanCache> scans);
  // Stops polling.
  ~MemoryProvider();
  MemoryProvider(const MemoryProvider&) = delete;
  MemoryProvider& operator=(const MemoryProvider&) = delete;

  // Ticks immediately, then once per interval.
  void start(Duration interval);
  void tick();

  Published<MemorySnapshot> current{MemorySnapshot::demonstration()};
  Published<HistoryRing<MemorySnapshot>> history{HistoryRing<MemorySnapshot>(60)};
  Published<HistoryRing<double>> usageHistory{HistoryRing<double>(43200)};  // percent used at each tick
  bool paused = false;  // the polling loop skips its ticks while set

 private:
  std::optional<MemorySnapshot> readSnapshot(std::vector<MemorySnapshot::ProcessInfo> topProcesses);
  void startScanIfDue();
  static Task scan(MainLoop& loop, std::weak_ptr<MemoryProvider> provider,
                   std::shared_ptr<ProcessScanCache> scans);

  MainLoop& loop_;
  platform::Memory& memory_;
  std::shared_ptr<ProcessScanCache> scans_;
  Task task_;
  std::optional<std::uint64_t> physicalBytes_;  // read once, on first use; 0 if that failed
  bool isScanning_ = false;
  int pollsSinceLastScan_ = 0;
};

}  // namespace kestrune
