#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>

#include "platform/PowerSources.h"

namespace kestrune::platform {

// What the kernel tells of one pack. A pack counts in charge or in energy, seldom in both. Absent: it doesn't
// say, or what it says is no figure.
struct BatteryPack {
  std::string status;                    // "Charging", "Discharging", "Not charging", "Full", "Unknown"
  std::optional<std::int64_t> capacity;  // percent
  std::optional<std::int64_t> energyNow, energyFull, energyFullDesign;  // µWh
  std::optional<std::int64_t> chargeNow, chargeFull, chargeFullDesign;  // µAh
  std::optional<std::int64_t> powerNow;                                 // µW
  std::optional<std::int64_t> currentNow;                               // µA
  std::optional<std::int64_t> voltageNow, voltageMinDesign;             // µV
  std::optional<std::int64_t> cycleCount;
  std::optional<std::int64_t> temperature;  // tenths of a degree Celsius
};

// How far the packs are charged together and how long that takes or lasts. A pack whose charge can't be told
// doesn't count; absent: that goes for all of them.
std::optional<PowerSource> combinedPowerSource(std::span<const BatteryPack> packs);

// The packs' hardware figures together: charges and currents are sums, the voltage is the mean, cycles and
// temperature are those of the pack that is worst off. Absent: there is no pack.
std::optional<BatteryRegistry> combinedRegistry(std::span<const BatteryPack> packs);

}  // namespace kestrune::platform
