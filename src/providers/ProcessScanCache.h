#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "platform/ProcessTable.h"
#include "runtime/Clock.h"
#include "runtime/WorkLane.h"

namespace kestrune {

// One process as the last walk saw it.
struct ProcessEntry {
  std::int32_t pid = 0;           // above 0
  std::string name;               // UTF-8, never empty
  std::string executablePath;     // UTF-8, empty when it can't be read
  std::uint64_t memoryBytes = 0;  // resident
  std::uint64_t tickUser = 0;     // cumulative nanoseconds
  std::uint64_t tickSys = 0;      // cumulative nanoseconds
};

// The only reader of the process table. Keeps the last walk for 2 seconds, so that several callers share it.
// Works only in its lane, which runs one thing at a time, and therefore needs no lock.
class ProcessScanCache {
 public:
  static constexpr double staleness = 2.0;  // seconds until a walk is repeated

  // Clock and lane must outlive the cache. It doesn't own the lane: work queued there may hold the last
  // reference to the cache.
  ProcessScanCache(const Clock& clock, std::shared_ptr<platform::ProcessTable> table, WorkLane& lane);

  // The lane in which `entries` may be called.
  WorkLane& lane() const { return lane_; }

  // The processes in the kernel's order: from the last walk if that ended less than `staleness` ago by the
  // wall clock, otherwise from a new one. Empty if the table can't be read. Valid until the next call. In the
  // lane only.
  const std::vector<ProcessEntry>& entries();

 private:
  std::vector<ProcessEntry> walk();

  const Clock& clock_;
  std::shared_ptr<platform::ProcessTable> table_;
  WorkLane& lane_;
  std::vector<ProcessEntry> cachedEntries_;
  Date lastScanDate_ = Date::distantPast;
};

}  // namespace kestrune
