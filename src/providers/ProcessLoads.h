#pragma once

#include <cstdint>
#include <unordered_map>
#include <vector>

#include "providers/CPUSnapshot.h"
#include "providers/CounterPair.h"
#include "providers/ProcessScanCache.h"
#include "runtime/Date.h"

namespace kestrune {

// User and system time of each process in nanoseconds, by process id.
using ProcessTicks = std::unordered_map<std::int32_t, CounterPair>;

// The result of one scan.
struct ProcessLoads {
  ProcessTicks ticks;  // of all entries, for the next scan to compare with
  // At most 8, busiest first; equals in the order of the entries.
  std::vector<CPUSnapshot::ProcessInfo> busiest;
};

// The load of each process since the previous scan. A process is not among the busiest if `previous` lacks
// it, if it was read at most 0.1 s before, or if it used at most 0.05 percent. Any thread.
ProcessLoads processLoads(const std::vector<ProcessEntry>& entries, const ProcessTicks& previous, Date now);

}  // namespace kestrune
