#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace kestrune::platform {

// Who made an Arm core and which it is, as its identification register says.
struct ArmCore {
  std::uint32_t implementer = 0;
  std::uint32_t part = 0;
  friend bool operator==(const ArmCore&, const ArmCore&) = default;
};

// What /proc/cpuinfo says. Texts are empty and counts 0 where it doesn't.
struct CpuInfo {
  std::string modelName;          // of the first processor; runs of blanks are one blank
  std::string hardware;           // 32-bit Arm: the chip that the kernel was told of
  std::vector<ArmCore> armCores;  // each kind once
  std::int32_t processors = 0;
  std::int32_t physicalCores = 0;  // summed over the packages
};

// Never fails: a line that isn't understood is passed over.
CpuInfo parseCpuInfo(std::string_view text);

// The name of a chip of these cores, the largest first: "Arm Cortex-A76 + Cortex-A55". Kinds that aren't
// known are left out; empty where none is.
std::string armCoreNames(const std::vector<ArmCore>& cores);

}  // namespace kestrune::platform
