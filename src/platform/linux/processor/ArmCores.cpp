#include <algorithm>
#include <array>

#include "platform/linux/processor/CpuInfo.h"

namespace kestrune::platform {
namespace {

struct KnownCore {
  ArmCore core;
  std::string_view maker;
  std::string_view name;
};

// For each maker from the largest core to the smallest, the order in which a mixed chip lists them.
constexpr auto knownCores = std::to_array<KnownCore>({
    {{0x41, 0xd84}, "Arm", "Neoverse-V3"},
    {{0x41, 0xd4f}, "Arm", "Neoverse-V2"},
    {{0x41, 0xd40}, "Arm", "Neoverse-V1"},
    {{0x41, 0xd8e}, "Arm", "Neoverse-N3"},
    {{0x41, 0xd49}, "Arm", "Neoverse-N2"},
    {{0x41, 0xd0c}, "Arm", "Neoverse-N1"},
    {{0x41, 0xd4a}, "Arm", "Neoverse-E1"},
    {{0x41, 0xd85}, "Arm", "Cortex-X925"},
    {{0x41, 0xd82}, "Arm", "Cortex-X4"},
    {{0x41, 0xd4e}, "Arm", "Cortex-X3"},
    {{0x41, 0xd48}, "Arm", "Cortex-X2"},
    {{0x41, 0xd4c}, "Arm", "Cortex-X1C"},
    {{0x41, 0xd44}, "Arm", "Cortex-X1"},
    {{0x41, 0xd87}, "Arm", "Cortex-A725"},
    {{0x41, 0xd81}, "Arm", "Cortex-A720"},
    {{0x41, 0xd4d}, "Arm", "Cortex-A715"},
    {{0x41, 0xd47}, "Arm", "Cortex-A710"},
    {{0x41, 0xd4b}, "Arm", "Cortex-A78C"},
    {{0x41, 0xd42}, "Arm", "Cortex-A78AE"},
    {{0x41, 0xd41}, "Arm", "Cortex-A78"},
    {{0x41, 0xd0d}, "Arm", "Cortex-A77"},
    {{0x41, 0xd0e}, "Arm", "Cortex-A76AE"},
    {{0x41, 0xd0b}, "Arm", "Cortex-A76"},
    {{0x41, 0xd0a}, "Arm", "Cortex-A75"},
    {{0x41, 0xd09}, "Arm", "Cortex-A73"},
    {{0x41, 0xd08}, "Arm", "Cortex-A72"},
    {{0x41, 0xd07}, "Arm", "Cortex-A57"},
    {{0x41, 0xc0e}, "Arm", "Cortex-A17"},
    {{0x41, 0xc0f}, "Arm", "Cortex-A15"},
    {{0x41, 0xc09}, "Arm", "Cortex-A9"},
    {{0x41, 0xc08}, "Arm", "Cortex-A8"},
    {{0x41, 0xd80}, "Arm", "Cortex-A520"},
    {{0x41, 0xd46}, "Arm", "Cortex-A510"},
    {{0x41, 0xd06}, "Arm", "Cortex-A65"},
    {{0x41, 0xd05}, "Arm", "Cortex-A55"},
    {{0x41, 0xd03}, "Arm", "Cortex-A53"},
    {{0x41, 0xd04}, "Arm", "Cortex-A35"},
    {{0x41, 0xd01}, "Arm", "Cortex-A32"},
    {{0x41, 0xc07}, "Arm", "Cortex-A7"},
    {{0x41, 0xc05}, "Arm", "Cortex-A5"},
    {{0x51, 0x001}, "Qualcomm", "Oryon"},
    {{0x51, 0x804}, "Qualcomm", "Kryo-4XX-Gold"},
    {{0x51, 0x805}, "Qualcomm", "Kryo-4XX-Silver"},
    {{0x51, 0x802}, "Qualcomm", "Kryo-3XX-Gold"},
    {{0x51, 0x803}, "Qualcomm", "Kryo-3XX-Silver"},
    {{0x51, 0x800}, "Qualcomm", "Kryo-2XX-Gold"},
    {{0x51, 0x801}, "Qualcomm", "Kryo-2XX-Silver"},
    {{0x61, 0x023}, "Apple", "Firestorm-M1"},
    {{0x61, 0x022}, "Apple", "Icestorm-M1"},
    {{0x61, 0x033}, "Apple", "Avalanche-M2"},
    {{0x61, 0x032}, "Apple", "Blizzard-M2"},
    {{0xc0, 0xac4}, "Ampere", "Ampere-1a"},
    {{0xc0, 0xac3}, "Ampere", "Ampere-1"},
    {{0x4e, 0x004}, "NVIDIA", "Carmel"},
});

}  // namespace

std::string armCoreNames(const std::vector<ArmCore>& cores) {
  std::string names;
  std::string_view lastMaker;
  for (const KnownCore& known : knownCores) {
    if (std::ranges::find(cores, known.core) == cores.end()) continue;
    if (!names.empty()) names += " + ";
    if (known.maker != lastMaker) names.append(known.maker).append(" ");
    names += known.name;
    lastMaker = known.maker;
  }
  return names;
}

}  // namespace kestrune::platform
