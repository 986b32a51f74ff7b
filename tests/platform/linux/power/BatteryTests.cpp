#include <filesystem>

#include <gtest/gtest.h>

#include "platform/linux/files/Text.h"
#include "platform/linux/power/LinuxPowerSources.h"
#include "support/TemporaryFolder.h"

namespace kestrune::platform {
namespace {

std::string shown(std::optional<std::int64_t> figure) {
  return figure ? std::to_string(*figure) : "-";
}

class LinuxPowerSourcesTest : public testing::Test {
 protected:
  // `files` as "name=content name=content".
  void supply(const std::string& name, std::string_view files) {
    const std::string folder = "sys/class/power_supply/" + name + "/";
    root.write(folder + "type", "Battery\n");
    while (!files.empty()) {
      std::string_view content = takePart(files, ' ');
      const std::string file(takePart(content, '='));
      root.write(folder + file, std::string(content) + "\n");
    }
  }
  // Percent, minutes until empty and full, and whether it is charging.
  std::string source() {
    const auto source = sources.powerSource();
    if (!source) return "none";
    return shown(source->currentCapacity) + "% " + shown(source->timeToEmpty) + " " +
           shown(source->timeToFullCharge) + (source->isCharging.value() ? " charging" : "");
  }
  // Capacity by design, when full and now, in mAh; mV, mA, cycles, hundredths of a degree.
  std::string registry() {
    const auto battery = sources.battery();
    if (!battery) return "none";
    return shown(battery->designCapacity) + " " + shown(battery->rawMaxCapacity) + " " +
           shown(battery->rawCurrentCapacity) + " mAh " + shown(battery->voltage) + " mV " +
           shown(battery->instantAmperage) + " mA " + shown(battery->cycleCount) + " cycles " +
           shown(battery->temperature) + (battery->fullyCharged.value() ? " full" : "");
  }

  test::TemporaryFolder root;
  LinuxPowerSources sources{root.path()};
};

// 60 Wh by design at 12 V, 48 Wh when full, half full, discharging at 12 W.
constexpr std::string_view energyPack =
    "status=Discharging present=1 capacity=51 energy_full_design=60000000 energy_full=48000000 "
    "energy_now=24000000 power_now=12000000 voltage_min_design=12000000 voltage_now=11500000 "
    "cycle_count=120 temp=305";

// 24 Wh at 8 V, full and idle.
constexpr std::string_view fullChargePack =
    "status=Full capacity=100 charge_full_design=4000000 charge_full=3000000 charge_now=3000000 "
    "current_now=0 voltage_now=8000000 cycle_count=3";

TEST_F(LinuxPowerSourcesTest, figuresOfEachMachine) {
  struct Machine {
    std::string what;
    std::vector<std::string_view> packs;
    std::string source;
    std::string registry = "- - - mAh - mV - mA - cycles -";
  };
  const std::vector<Machine> machines{
      {"a pack that counts energy, with the kernel's own percentage",
       {energyPack},
       "51% 120 -1",
       "5000 4000 2000 mAh 11500 mV -1043 mA 120 cycles 3050"},
      {"a pack that counts charge, with a sign that contradicts the status",
       {"status=Charging charge_full_design=5000000 charge_full=4000000 charge_now=1000000 "
        "current_now=-2000000 voltage_now=8000000"},
       "25% -1 90 charging",
       "5000 4000 1000 mAh 8000 mV 2000 mA - cycles -"},
      {"two packs, weighted by their energy",
       {energyPack, fullChargePack},
       "67% 240 -1",
       "9000 7000 5000 mAh 9750 mV -1043 mA 120 cycles 3050"},
      {"a full pack", {fullChargePack}, "100% -1 -1", "4000 3000 3000 mAh 8000 mV 0 mA 3 cycles - full"},
      {"packs that report nothing but percentages", {"capacity=40", "capacity=80"}, "60% -1 -1"},
      {"garbage",
       {"status=Discharging capacity=250 energy_full=x energy_now=-5 voltage_now=99999999999999999999 "
        "temp=hot"},
       "none"},
      {"more than full", {"energy_full=100 energy_now=130"}, "100% -1 -1"},
      {"a time that no battery lasts",
       {"status=Discharging power_now=1 energy_now=2000000000 energy_full=2000000000"},
       "100% -1 -1"},
  };
  for (const auto& machine : machines) {
    SCOPED_TRACE(machine.what);
    std::filesystem::remove_all(root / "sys");
    for (std::size_t i = 0; i < machine.packs.size(); ++i)
      supply("BAT" + std::to_string(i), machine.packs[i]);
    EXPECT_EQ(source(), machine.source);
    EXPECT_EQ(registry(), machine.registry);
  }
}

TEST_F(LinuxPowerSourcesTest, ignoresWhatDoesNotPowerTheMachine) {
  EXPECT_EQ(source(), "none") << "no such folder";
  supply("AC", "type=Mains online=1");
  supply("hidpp_battery_0", "scope=Device capacity=80 status=Discharging");
  supply("BAT0", "present=0 capacity=80");
  EXPECT_EQ(source(), "none");
  EXPECT_EQ(registry(), "none");
}

}  // namespace
}  // namespace kestrune::platform
