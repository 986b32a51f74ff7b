#include "platform/linux/power/LinuxPowerSources.h"

#include <limits>
#include <utility>

#include "platform/linux/files/Directory.h"
#include "platform/linux/files/FieldScanner.h"
#include "platform/linux/files/Files.h"

namespace kestrune::platform {
namespace {

// Far above any battery's figures in millionths. Anything beyond is garbage.
constexpr std::int64_t maxFigure = std::numeric_limits<std::int32_t>::max();

std::optional<std::int64_t> figure(const std::string& file) {
  const std::string text = readText(file);
  FieldScanner fields(text);
  const auto value = fields.number<std::int64_t>();
  const bool isPlausible = value && fields.atEnd() && *value >= -maxFigure && *value <= maxFigure;
  return isPlausible ? value : std::nullopt;
}

// A figure that can't be negative.
std::optional<std::int64_t> amount(const std::string& file) {
  const auto value = figure(file);
  return value && *value >= 0 ? value : std::nullopt;
}

bool powersTheMachine(const std::string& folder) {
  return readText(folder + "type") == "Battery" && readText(folder + "scope") != "Device" &&
         readText(folder + "present") != "0";
}

BatteryPack readPack(const std::string& folder) {
  return {.status = readText(folder + "status"),
          .capacity = amount(folder + "capacity"),
          .energyNow = amount(folder + "energy_now"),
          .energyFull = amount(folder + "energy_full"),
          .energyFullDesign = amount(folder + "energy_full_design"),
          .chargeNow = amount(folder + "charge_now"),
          .chargeFull = amount(folder + "charge_full"),
          .chargeFullDesign = amount(folder + "charge_full_design"),
          .powerNow = figure(folder + "power_now"),
          .currentNow = figure(folder + "current_now"),
          .voltageNow = amount(folder + "voltage_now"),
          .voltageMinDesign = amount(folder + "voltage_min_design"),
          .cycleCount = amount(folder + "cycle_count"),
          .temperature = figure(folder + "temp")};
}

}  // namespace

LinuxPowerSources::LinuxPowerSources(std::string root) : root_(std::move(root)) {}

std::optional<PowerSource> LinuxPowerSources::powerSource() {
  return combinedPowerSource(readPacks());
}

std::optional<BatteryRegistry> LinuxPowerSources::battery() {
  return combinedRegistry(readPacks());
}

std::vector<BatteryPack> LinuxPowerSources::readPacks() const {
  std::vector<BatteryPack> packs;
  for (const std::string& name : entryNames(below(root_, "sys/class/power_supply"))) {
    const std::string folder = below(root_, "sys/class/power_supply/" + name + "/");
    if (powersTheMachine(folder)) packs.push_back(readPack(folder));
  }
  return packs;
}

}  // namespace kestrune::platform
