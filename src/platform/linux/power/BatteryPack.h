#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>

#include "platform/PowerSources.h"

namespace kestrune::platform {

// One pack as the kernel reports it. A pack counts charge or energy, rarely both. Absent: not reported, or
// not a number.
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

// The charge of all packs together and the time until they are empty or full. Packs of unknown charge don't
// count. Absent: no pack's charge is known.
std::optional<PowerSource> combinedPowerSource(std::span<const BatteryPack> packs);

// The hardware figures of all packs together: charges and currents are summed, the voltage is the mean, cycle
// count and temperature are the highest. Absent: there is no pack.
std::optional<BatteryRegistry> combinedRegistry(std::span<const BatteryPack> packs);

}  // namespace kestrune::platform
