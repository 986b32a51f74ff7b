#include "providers/CPUSnapshot.h"

namespace kestrune {

CPUSnapshot CPUSnapshot::demonstration() {
  return {
      .usagePercent = 34.0,
      .coreUsages = {},
      .topProcesses = {
          {.id = 1, .name = "Xcode", .executablePath = "", .cpuPercent = 18.2, .memoryBytes = 4100000000},
          {.id = 2,
           .name = "Chrome Helper",
           .executablePath = "",
           .cpuPercent = 9.1,
           .memoryBytes = 892000000},
          {.id = 3, .name = "docker", .executablePath = "", .cpuPercent = 4.3, .memoryBytes = 2800000000}}};
}

}  // namespace kestrune
