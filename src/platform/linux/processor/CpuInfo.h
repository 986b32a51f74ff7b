#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace kestrune::platform {

// The maker and model of an Arm core, from its identification register.
struct ArmCore {
  std::uint32_t implementer = 0;
  std::uint32_t part = 0;
  friend bool operator==(const ArmCore&, const ArmCore&) = default;
};

// The content of /proc/cpuinfo. Missing texts are empty and missing counts 0.
struct CpuInfo {
  std::string modelName;          // of the first processor, with single blanks
  std::string hardware;           // 32-bit Arm: the chip, as the kernel names it
  std::vector<ArmCore> armCores;  // each kind once
  std::int32_t processors = 0;
  std::int32_t physicalCores = 0;  // summed over the packages
};

// Never fails: lines that aren't understood are skipped.
CpuInfo parseCpuInfo(std::string_view text);

// The name of a chip of these cores, the largest first: "Arm Cortex-A76 + Cortex-A55". Unknown kinds are left
// out; empty if all are unknown.
std::string armCoreNames(const std::vector<ArmCore>& cores);

}  // namespace kestrune::platform
