#pragma once

#include <vector>

#include "providers/CPUSnapshot.h"
#include "providers/ProcessScanCache.h"
#include "runtime/Date.h"

namespace kestrune {

// What one scan makes of the processes.
struct ProcessLoads {
  ProcessTicks ticks;  // of all entries, for the next scan to compare with
  // At most 8, busiest first; equals in the order of the entries.
  std::vector<CPUSnapshot::ProcessInfo> busiest;
};

// The load of each process since the previous scan. Processes that `previous` doesn't know, that it saw at
// most 0.1 s ago, or that used at most 0.05 percent are not among the busiest. Any thread.
ProcessLoads processLoads(const std::vector<ProcessEntry>& entries, const ProcessTicks& previous, Date now);

}  // namespace kestrune
