#include <gtest/gtest.h>

#include "platform/linux/processor/LinuxChip.h"
#include "support/TemporaryFolder.h"

namespace kestrune::platform {
namespace {

struct Expected {
  std::string machine;
  std::string brand;
  std::string model;
  std::int32_t physical = 0;
  std::int32_t performance = 0;
  std::int32_t efficiency = 0;
};

TEST(Chip, ofEachMachine) {
  const std::vector<Expected> machines{
      {"plain-4-core-pc", "Intel(R) Core(TM) i5-6500 CPU @ 3.20GHz", "OptiPlex 7040", 4},
      {"hybrid-laptop", "13th Gen Intel(R) Core(TM) i7-13800H", "Precision 5680", 14, 6, 8},
      {"arm-two-clusters", "Arm Cortex-A76 + Cortex-A55", "Radxa ROCK 5B", 8, 4, 4},
      {"container-offline-gaps", "AMD EPYC 7302P 16-Core Processor", "", 4},
      {"no-such-machine", "", "", 0},
  };
  for (const Expected& expected : machines) {
    SCOPED_TRACE(expected.machine);
    LinuxChip chip(test::fixture(expected.machine));
    EXPECT_EQ(chip.brand(), expected.brand);
    EXPECT_EQ(chip.machineModel(), expected.model);
    EXPECT_EQ(chip.physicalCores(), expected.physical);
    EXPECT_EQ(chip.performanceCores(), expected.performance);
    EXPECT_EQ(chip.efficiencyCores(), expected.efficiency);
  }
}

TEST(Chip, on32BitArmIsCalledAsTheKernelCallsTheHardware) {
  const test::TemporaryFolder root;
  const std::string cores =
      "model name : ARMv7 Processor rev 3 (v7l)\nCPU implementer : 0x41\nCPU part : 0xd08\n";
  root.write("proc/cpuinfo", cores + "\nHardware : BCM2711\n");
  EXPECT_EQ(LinuxChip(root.path()).brand(), "BCM2711");
  root.write("proc/cpuinfo", cores + "\nHardware : Generic DT based system\n");
  EXPECT_EQ(LinuxChip(root.path()).brand(), "Arm Cortex-A72");
}

TEST(Chip, withOnlyOneKindOfCoreLeftHasNoLevels) {
  const test::TemporaryFolder root;
  root.write("sys/devices/cpu_core/cpus", "0-3\n");
  root.write("sys/devices/cpu_atom/cpus", "4-5\n");
  root.write("sys/devices/system/cpu/online", "4-5\n");
  for (const char* cpu : {"4", "5"}) {
    root.write("sys/devices/system/cpu/cpu" + std::string(cpu) + "/topology/core_cpus_list", cpu);
  }
  LinuxChip chip(root.path());
  EXPECT_EQ(chip.physicalCores(), 2);
  EXPECT_EQ(chip.performanceCores(), 0);
  EXPECT_EQ(chip.efficiencyCores(), 0);
}

}  // namespace
}  // namespace kestrune::platform
