#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace kestrune {

struct CPUSnapshot {
  struct ProcessInfo {
    std::int32_t id = 0;
    std::string name;
    std::string executablePath;     // empty if it can't be read
    double cpuPercent = 0;          // of one processor; above 0.05, at most 999
    std::uint64_t memoryBytes = 0;  // resident
  };

  double usagePercent = 0;                // of the whole machine, 0 to 100
  std::vector<double> coreUsages;         // of each logical processor, 0 to 100, efficiency cores first
  std::vector<ProcessInfo> topProcesses;  // at most 8, busiest first

  // Shown until real data replaces it.
  static CPUSnapshot demonstration();
};

}  // namespace kestrune
