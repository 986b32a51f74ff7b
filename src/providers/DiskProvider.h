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
  // Of the volume that holds "/".
  std::string volumeName;
  std::uint64_t volumeTotalBytes = 0;
  std::uint64_t volumeUsedBytes = 0;  // total less free, at least 0
  std::uint64_t volumeFreeBytes = 0;

  // What is shown until real data replaces it, and stands for volume figures that were never read.
  static DiskSnapshot demonstration();
};

// Turns the byte counters of all drives into rates once per interval, and reads the root volume. A failed
// read leaves the last figures as they are. Main thread only.
class DiskProvider : public std::enable_shared_from_this<DiskProvider> {
 public:
  // Reads nothing. Loop and services must outlive the provider.
  DiskProvider(MainLoop& loop, platform::BlockStorage& storage, platform::Volumes& volumes);
  // Ends the polling.
  ~DiskProvider();
  DiskProvider(const DiskProvider&) = delete;
  DiskProvider& operator=(const DiskProvider&) = delete;

  // Notes the counters at once and publishes nothing; ticks once per interval, so that the first rate is one
  // over a whole interval.
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
