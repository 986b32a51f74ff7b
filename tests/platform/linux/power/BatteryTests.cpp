#include <gtest/gtest.h>

#include "platform/linux/power/LinuxPowerSources.h"
#include "support/TemporaryFolder.h"

namespace kestrune::platform {
namespace {

using Files = std::vector<std::pair<std::string, std::string>>;

class LinuxPowerSourcesTest : public testing::Test {
 protected:
  void supply(const std::string& name, const Files& files) {
    const std::string folder = "sys/class/power_supply/" + name + "/";
    root.write(folder + "type", "Battery\n");
    for (const auto& [file, content] : files) root.write(folder + file, content + "\n");
  }
  PowerSource source() { return sources.powerSource().value_or(PowerSource{}); }
  BatteryRegistry registry() { return sources.battery().value_or(BatteryRegistry{}); }

  test::TemporaryFolder root;
  LinuxPowerSources sources{root.path()};
};

// 60 Wh as designed at 12 V, 48 Wh when full now, half full, giving away 12 W.
const Files energyPack = {{"status", "Discharging"},
                          {"present", "1"},
                          {"capacity", "51"},
                          {"energy_full_design", "60000000"},
                          {"energy_full", "48000000"},
                          {"energy_now", "24000000"},
                          {"power_now", "12000000"},
                          {"voltage_min_design", "12000000"},
                          {"voltage_now", "11500000"},
                          {"cycle_count", "120"},
                          {"temp", "305"}};

TEST_F(LinuxPowerSourcesTest, aPackThatCountsEnergy) {
  supply("BAT0", energyPack);
  EXPECT_EQ(source().currentCapacity, 51) << "the kernel's own figure";
  EXPECT_EQ(source().timeToEmpty, 120);
  EXPECT_EQ(source().timeToFullCharge, -1);
  EXPECT_EQ(registry().designCapacity, 5000);
  EXPECT_EQ(registry().rawMaxCapacity, 4000);
  EXPECT_EQ(registry().rawCurrentCapacity, 2000);
  EXPECT_EQ(registry().voltage, 11500);
  EXPECT_EQ(registry().instantAmperage, -1043);
  EXPECT_EQ(registry().cycleCount, 120);
  EXPECT_EQ(registry().temperature, 3050);
  EXPECT_EQ(registry().fullyCharged, false);
}

TEST_F(LinuxPowerSourcesTest, aPackThatCountsCharge) {
  supply("BAT1", {{"status", "Charging"},
                  {"charge_full_design", "5000000"},
                  {"charge_full", "4000000"},
                  {"charge_now", "1000000"},
                  {"current_now", "-2000000"},
                  {"voltage_now", "8000000"}});
  EXPECT_EQ(source().currentCapacity, 25);
  EXPECT_EQ(source().isCharging, true);
  EXPECT_EQ(source().timeToFullCharge, 90);
  EXPECT_EQ(source().timeToEmpty, -1);
  EXPECT_EQ(registry().designCapacity, 5000);
  EXPECT_EQ(registry().rawCurrentCapacity, 1000);
  EXPECT_EQ(registry().instantAmperage, 2000) << "the status tells the sign";
  EXPECT_EQ(registry().temperature, std::nullopt);
}

TEST_F(LinuxPowerSourcesTest, severalPacksAreWeightedByTheirEnergy) {
  supply("BAT0", energyPack);
  // 24 Wh at 8 V, full and idle.
  supply("BAT1", {{"status", "Full"},
                  {"capacity", "100"},
                  {"charge_full_design", "4000000"},
                  {"charge_full", "3000000"},
                  {"charge_now", "3000000"},
                  {"current_now", "0"},
                  {"voltage_now", "8000000"},
                  {"cycle_count", "3"}});
  EXPECT_EQ(source().currentCapacity, 67) << "24 + 24 of 48 + 24 Wh";
  EXPECT_EQ(source().timeToEmpty, 240);
  EXPECT_EQ(registry().designCapacity, 9000);
  EXPECT_EQ(registry().rawMaxCapacity, 7000);
  EXPECT_EQ(registry().rawCurrentCapacity, 5000);
  EXPECT_EQ(registry().voltage, 9750);
  EXPECT_EQ(registry().cycleCount, 120);
  EXPECT_EQ(registry().fullyCharged, false);
}

TEST_F(LinuxPowerSourcesTest, whatDoesNotDriveTheMachineIsNoBattery) {
  EXPECT_FALSE(sources.powerSource()) << "no such folder";
  supply("AC", {{"type", "Mains"}, {"online", "1"}});
  supply("hidpp_battery_0", {{"scope", "Device"}, {"capacity", "80"}, {"status", "Discharging"}});
  supply("BAT0", {{"present", "0"}, {"capacity", "80"}});
  EXPECT_FALSE(sources.powerSource());
  EXPECT_FALSE(sources.battery());
}

TEST_F(LinuxPowerSourcesTest, garbageIsNoFigure) {
  supply("BAT0", {{"status", "Discharging"},
                  {"capacity", "250"},
                  {"energy_full", "x"},
                  {"energy_now", "-5"},
                  {"voltage_now", "99999999999999999999"},
                  {"temp", "hot"}});
  EXPECT_FALSE(sources.powerSource()) << "how full it is can't be told";
  EXPECT_EQ(registry().voltage, std::nullopt);
  EXPECT_EQ(registry().temperature, std::nullopt);
  supply("BAT0", {{"energy_full", "100"}, {"energy_now", "130"}});
  EXPECT_EQ(source().currentCapacity, 100);
  supply("BAT0", {{"power_now", "1"}, {"energy_now", "2000000000"}, {"energy_full", "2000000000"}});
  EXPECT_EQ(source().timeToEmpty, -1) << "no battery lasts for centuries";
}

}  // namespace
}  // namespace kestrune::platform
