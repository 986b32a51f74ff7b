#include "platform/linux/power/BatteryPack.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace kestrune::platform {
namespace {

using Figure = std::optional<std::int64_t>;

constexpr double microPerUnit = 1e6;
constexpr double microPerMilli = 1e3;
constexpr double minutesPerHour = 60;
constexpr double maxMinutes = 60 * 24 * 30;  // anything longer means an idle pack
constexpr std::int64_t estimating = -1;
constexpr std::int64_t hundredthsPerTenth = 10;

// A pack's content in one unit, no matter which it counts in.
struct Energy {
  double now = 0;   // µWh
  double full = 0;  // µWh
};

// The voltage for converting between charge and energy. If it is unknown, 1 V will do: the results from a
// single pack are ratios, in which it cancels out.
double volts(const BatteryPack& pack) {
  for (const Figure& voltage : {pack.voltageMinDesign, pack.voltageNow}) {
    if (voltage.value_or(0) > 0) return static_cast<double>(*voltage) / microPerUnit;
  }
  return 1;
}

std::optional<Energy> energyOf(const BatteryPack& pack) {
  if (pack.energyNow && pack.energyFull.value_or(0) > 0) {
    return Energy{static_cast<double>(*pack.energyNow), static_cast<double>(*pack.energyFull)};
  }
  if (pack.chargeNow && pack.chargeFull.value_or(0) > 0) {
    return Energy{static_cast<double>(*pack.chargeNow) * volts(pack),
                  static_cast<double>(*pack.chargeFull) * volts(pack)};
  }
  return std::nullopt;
}

// Drivers differ in the sign of current and power, so the status decides.
double direction(const BatteryPack& pack) {
  return pack.status == "Discharging" ? -1 : 1;
}

// µW, positive while charging.
std::optional<double> powerOf(const BatteryPack& pack) {
  if (pack.powerNow) return std::abs(static_cast<double>(*pack.powerNow)) * direction(pack);
  if (!pack.currentNow) return std::nullopt;
  return std::abs(static_cast<double>(*pack.currentNow)) * volts(pack) * direction(pack);
}

std::optional<double> milliamperes(const BatteryPack& pack) {
  if (pack.currentNow)
    return std::abs(static_cast<double>(*pack.currentNow)) / microPerMilli * direction(pack);
  const bool hasVoltage = pack.voltageNow.value_or(0) > 0;
  if (!pack.powerNow || !hasVoltage) return std::nullopt;
  const double volt = static_cast<double>(*pack.voltageNow) / microPerUnit;
  return std::abs(static_cast<double>(*pack.powerNow)) / volt / microPerMilli * direction(pack);
}

std::optional<double> milliampereHours(Figure charge, Figure energy, const BatteryPack& pack) {
  if (charge) return static_cast<double>(*charge) / microPerMilli;
  const bool hasVoltage = pack.voltageMinDesign.value_or(0) > 0 || pack.voltageNow.value_or(0) > 0;
  if (!energy || !hasVoltage) return std::nullopt;
  return static_cast<double>(*energy) / volts(pack) / microPerMilli;
}

bool isPlausiblePercent(Figure percent) {
  return percent && *percent >= 0 && *percent <= 100;
}

// A single pack's own figure is what every other program shows.
Figure percentOf(std::span<const BatteryPack> packs) {
  if (packs.size() == 1 && isPlausiblePercent(packs[0].capacity)) return packs[0].capacity;
  Energy all;
  std::int64_t percents = 0;
  std::int64_t counted = 0;
  for (const BatteryPack& pack : packs) {
    if (const auto energy = energyOf(pack)) {
      all.now += energy->now;
      all.full += energy->full;
    } else if (isPlausiblePercent(pack.capacity)) {
      percents += *pack.capacity;
      ++counted;
    }
  }
  if (all.full > 0) return std::clamp<std::int64_t>(std::llround(all.now / all.full * 100), 0, 100);
  return counted > 0 ? Figure(percents / counted) : std::nullopt;
}

// The minutes that `amount` takes at the given rate per hour.
std::int64_t minutes(double amount, double rate) {
  if (!(rate > 0) || !(amount > 0)) return estimating;
  const double result = amount / rate * minutesPerHour;
  return result <= maxMinutes ? static_cast<std::int64_t>(result) : estimating;
}

// The sum of `figure` over the packs that have it. Absent: none has it.
template <class Of>
Figure sum(std::span<const BatteryPack> packs, Of figure) {
  std::optional<double> total;
  for (const BatteryPack& pack : packs) {
    if (const std::optional<double> one = figure(pack)) total = total.value_or(0) + *one;
  }
  return total ? Figure(std::llround(*total)) : std::nullopt;
}

Figure highest(std::span<const BatteryPack> packs, Figure BatteryPack::*figure) {
  Figure result;
  for (const BatteryPack& pack : packs) result = std::max(result, pack.*figure);
  return result;
}

Figure meanMillivolts(std::span<const BatteryPack> packs) {
  double total = 0;
  int counted = 0;
  for (const BatteryPack& pack : packs) {
    if (pack.voltageNow.value_or(0) <= 0) continue;
    total += static_cast<double>(*pack.voltageNow) / microPerMilli;
    ++counted;
  }
  return counted > 0 ? Figure(std::llround(total / counted)) : std::nullopt;
}

}  // namespace

std::optional<PowerSource> combinedPowerSource(std::span<const BatteryPack> packs) {
  const Figure percent = percentOf(packs);
  if (!percent) return std::nullopt;
  Energy all;
  double power = 0;
  for (const BatteryPack& pack : packs) {
    const Energy energy = energyOf(pack).value_or(Energy{});
    all.now += energy.now;
    all.full += energy.full;
    power += powerOf(pack).value_or(0);
  }
  return PowerSource{
      .currentCapacity = percent,
      .isCharging = std::ranges::any_of(packs, [](const auto& pack) { return pack.status == "Charging"; }),
      .timeToEmpty = minutes(all.now, -power),
      .timeToFullCharge = minutes(all.full - all.now, power)};
}

std::optional<BatteryRegistry> combinedRegistry(std::span<const BatteryPack> packs) {
  if (packs.empty()) return std::nullopt;
  BatteryRegistry registry;
  registry.cycleCount = highest(packs, &BatteryPack::cycleCount);
  registry.designCapacity = sum(packs, [](const BatteryPack& pack) {
    return milliampereHours(pack.chargeFullDesign, pack.energyFullDesign, pack);
  });
  registry.voltage = meanMillivolts(packs);
  registry.instantAmperage = sum(packs, milliamperes);
  registry.fullyCharged = std::ranges::all_of(packs, [](const auto& pack) { return pack.status == "Full"; });
  registry.rawMaxCapacity = sum(packs, [](const BatteryPack& pack) {
    return milliampereHours(pack.chargeFull, pack.energyFull, pack);
  });
  registry.rawCurrentCapacity = sum(
      packs, [](const BatteryPack& pack) { return milliampereHours(pack.chargeNow, pack.energyNow, pack); });
  if (const Figure tenths = highest(packs, &BatteryPack::temperature)) {
    registry.temperature = *tenths * hundredthsPerTenth;
  }
  return registry;
}

}  // namespace kestrune::platform
