#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "platform/BlockStorage.h"
#include "platform/Volumes.h"
#include "providers/CounterPair.h"
#include "providers/HistoryRing.h"
#include "runtime/Published.h"
#include "runtime/Task.h"

namespace kestrune {

struct DiskSnapshot {
  double readBytesPerSec = 0;   // of all drives together
  double writeBytesPerSec = 0;  // of all drives together
  // The volume mounted at "/".
  std::string volumeName;
  std::uint64_t volumeTotalBytes = 0;
  std::uint64_t volumeUsedBytes = 0;  // total minus free, at least 0
  std::uint64_t volumeFreeBytes = 0;

  // Shown until real data replaces it. Volume figures that can't be read keep these values.
  static DiskSnapshot demonstration();
};

// Computes rates from the byte counters of all drives once per interval, and reads the root volume. A failed
// read keeps the last figures. Main thread only.
class DiskProvider : public std::enable_shared_from_this<DiskProvider> {
 public:
  // Reads nothing. Loop and services must outlive the provider.
  DiskProvider(MainLoop& loop, platform::BlockStorage& storage, platform::Volumes& volumes);
  // Stops polling.
  ~DiskProvider();
  DiskProvider(const DiskProvider&) = delete;
  DiskProvider& operator=(const DiskProvider&) = delete;

  // Reads the counters immediately and publishes nothing, then ticks once per interval: the first rate covers
  // a whole interval.
  void start(Duration interval);
  void tick();

  Published<DiskSnapshot> current{DiskSnapshot::demonstration()};
  Published<HistoryRing<DiskSnapshot>> history{HistoryRing<DiskSnapshot>(60)};
  bool paused = false;  // the polling loop skips its ticks while set

 private:
  bool readCounters();
  std::optional<DiskSnapshot> sample();
  void readVolume(DiskSnapshot& snapshot);

  MainLoop& loop_;
  platform::BlockStorage& storage_;
  platform::Volumes& volumes_;
  Task task_;
  CounterPair bytes_;  // read and written, of all drives, at the last successful reading
};

}  // namespace kestrune
