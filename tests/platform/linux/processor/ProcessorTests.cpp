#include <filesystem>
#include <limits>

#include <gmock/gmock.h>

#include "platform/linux/processor/CpuTopology.h"
#include "platform/linux/processor/LinuxChip.h"
#include "platform/linux/processor/LinuxProcessors.h"
#include "platform/linux/processor/ProcStat.h"
#include "support/TemporaryFolder.h"

namespace kestrune::platform {
namespace {

using testing::Each;
using testing::ElementsAre;
using Ticks = std::vector<ProcessorTicks>;

constexpr std::string_view end = "intr 5 1\nctxt 7\n";

class ProcessorsTest : public testing::Test {
 protected:
  // `lines` are those of the processors.
  std::optional<Ticks> readWith(const std::string& lines) {
    root.write("proc/stat", "cpu  1 1 1 1\n" + lines + std::string(end));
    return processors.processorTicks();
  }

  test::TemporaryFolder root;
  LinuxProcessors processors{root.path()};
};

TEST_F(ProcessorsTest, countsEachStateFromTheFirstRead) {
  EXPECT_THAT(*readWith("cpu0 1000 100 500 9000 50 5 6 7 400 40\n"), ElementsAre(ProcessorTicks{}));
  // user +10, nice +20, system 30 + 3 + 4 + 5, idle 40 + 2; the guests' 999 are in user and nice already.
  EXPECT_THAT(*readWith("cpu0 1010 120 530 9040 52 8 10 12 1399 1039\n"),
              ElementsAre(ProcessorTicks{.user = 10, .system = 42, .idle = 42, .nice = 20}));
}

TEST_F(ProcessorsTest, aDecreasingCounterAddsNothing) {
  readWith("cpu0 10 0 10 100 50\n");
  EXPECT_THAT(*readWith("cpu0 9 0 12 101 40\n"), ElementsAre(ProcessorTicks{.system = 2, .idle = 1}));
}

TEST_F(ProcessorsTest, restartsBeforeTheSumOverflows) {
  constexpr std::int64_t max = std::numeric_limits<std::int32_t>::max();
  readWith("cpu0 0 0 0 0\ncpu1 0 0 0 0\n");
  const std::string nearly = std::to_string(max - 10);
  EXPECT_THAT(*readWith("cpu0 0 0 0 " + nearly + "\ncpu1 0 0 10 0\n"),
              ElementsAre(ProcessorTicks{.idle = max - 10}, ProcessorTicks{.system = 10}));
  EXPECT_THAT(*readWith("cpu0 0 0 0 " + nearly + "\ncpu1 0 0 11 0\n"), Each(ProcessorTicks{}));
  EXPECT_THAT(*readWith("cpu0 3 0 0 " + nearly + "\ncpu1 0 0 11 4\n"),
              ElementsAre(ProcessorTicks{.user = 3}, ProcessorTicks{.idle = 4}));
}

TEST_F(ProcessorsTest, restartsWhenTheProcessorsChange) {
  readWith("cpu0 0 0 0 0\ncpu1 0 0 0 0\n");
  readWith("cpu0 5 0 0 0\ncpu1 0 0 0 5\n");
  EXPECT_THAT(*readWith("cpu0 9 0 0 0\n"), ElementsAre(ProcessorTicks{})) << "unplugged";
  EXPECT_THAT(*readWith("cpu0 10 0 0 0\n"), ElementsAre(ProcessorTicks{.user = 1}));
  EXPECT_THAT(*readWith("cpu0 10 0 0 0\ncpu3 0 0 0 99\n"), Each(ProcessorTicks{})) << "plugged";
  EXPECT_THAT(*readWith("cpu0 10 0 0 0\ncpu2 0 0 0 99\n"), Each(ProcessorTicks{})) << "as many, but others";
}

TEST_F(ProcessorsTest, aFailedReadChangesNothing) {
  EXPECT_FALSE(processors.processorTicks()) << "missing";
  readWith("cpu0 1 0 0 1\ncpu1 1 0 0 100\n");
  for (const char* broken : {"", "cpu  1 1 1 1\ncpu0 2 0 0 1\ncpu1 1 0 0 1", "cpu  1 1\ncpu0 2 0 0 1\n",
                             "cpu0 2 0 0 1\ncpu1 nonsense\nintr 5\n"}) {
    root.write("proc/stat", broken);
    EXPECT_FALSE(processors.processorTicks()) << broken;
  }
  EXPECT_THAT(*readWith("cpu0 4 0 0 1\ncpu1 1 0 0 102\n"),
              ElementsAre(ProcessorTicks{.user = 3}, ProcessorTicks{.idle = 2}));
}

// The ids in the order of the result. Each processor gains its id + 1, which identifies it.
std::vector<int> idsInOrder(const std::string& machine) {
  const test::TemporaryFolder root;
  std::filesystem::copy(test::fixture(machine), root.path(), std::filesystem::copy_options::recursive);
  LinuxProcessors processors(root.path());
  std::vector<int> ids;
  for (const int ticks : {0, 1}) {
    std::string text;
    for (const int id : onlineCpus(root.path())) {
      text += "cpu" + std::to_string(id) + " " + std::to_string(ticks * (id + 1)) + " 0 0 0\n";
    }
    root.write("proc/stat", text + std::string(end));
    ids.clear();
    const auto gained = processors.processorTicks().value();
    for (const auto& one : gained) ids.push_back(one.user - 1);
  }
  return ids;
}

TEST(ProcessorsOfMachines, efficiencyCoresComeFirst) {
  EXPECT_THAT(idsInOrder("plain-4-core-pc"), ElementsAre(0, 1, 2, 3));
  EXPECT_THAT(idsInOrder("hybrid-laptop"),
              ElementsAre(12, 13, 14, 15, 16, 17, 18, 19, 0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11));
  EXPECT_THAT(idsInOrder("arm-two-clusters"), ElementsAre(0, 1, 2, 3, 4, 5, 6, 7));
  EXPECT_THAT(idsInOrder("container-offline-gaps"), ElementsAre(0, 2, 3, 8, 9, 11));
}

TEST_F(ProcessorsTest, readsMoreThanTheFirstBufferHolds) {
  const auto lines = [](int user) {
    std::string all;
    for (int id = 0; id < 2048; ++id) {
      all += "cpu" + std::to_string(id) + " " + std::to_string(user + id) +
             " 1234567 12345678 1234567890 123456 123456 123456 0 0 0\n";
    }
    return all;
  };
  readWith(lines(1000000));
  const auto ticks = readWith(lines(1000007));
  ASSERT_TRUE(ticks);
  EXPECT_THAT(*ticks, testing::AllOf(testing::SizeIs(2048), Each(ProcessorTicks{.user = 7})));
}

TEST(ProcStat, refusesTruncatedText) {
  std::vector<RawProcessor> processors;
  const std::string whole = "cpu  9 9 9 9\ncpu0 1 2 3 4 5 6 7 8 9 10\ncpu7 11 12 13 14\nintr 5\n";
  ASSERT_TRUE(parseProcStat(whole, processors));
  ASSERT_EQ(processors.size(), 2U);
  EXPECT_EQ(processors[0], (RawProcessor{0, {1, 2, 3, 4, 5, 6, 7, 8}}));
  EXPECT_EQ(processors[1], (RawProcessor{7, {11, 12, 13, 14}})) << "an old kernel has four states";

  const auto firstSafe = whole.find("intr") + 1;
  for (std::size_t length = 0; length < whole.size(); ++length) {
    EXPECT_EQ(parseProcStat(whole.substr(0, length), processors), length >= firstSafe) << length;
  }
}

TEST(ProcStat, refusesInvalidText) {
  std::vector<RawProcessor> processors;
  for (const char* line : {"", "cpu  1 2 3 4\n", "cpux 1 2 3 4\n", "cpu0 1 2 3\n", "cpu0 1 2 x 4\n",
                           "cpu0 1 2 -3 4\n", "cpu-1 1 2 3 4\n", "cpu0 1 2 3 99999999999999999999\n"}) {
    EXPECT_FALSE(parseProcStat(line + std::string("intr 5\n"), processors)) << line;
  }
}

TEST(CpuList, readsRangesAndRefusesTheRest) {
  using Ids = std::vector<std::int32_t>;
  EXPECT_EQ(parseCpuList("0-2,8,10-11\n"), (Ids{0, 1, 2, 8, 10, 11}));
  EXPECT_EQ(parseCpuList("65535"), Ids{65535});
  EXPECT_EQ(parseCpuList("\n"), Ids{});
  for (const char* text :
       {"0-", "-3", "3-1", "1,,2", "1,", ",1", "a", "0-65536", "2,1", "1,1", "1-3,2", "0x1"}) {
    EXPECT_FALSE(parseCpuList(text)) << text;
  }
}

struct Expected {
  std::string machine;
  std::string brand;
  std::string model;
  std::int32_t physical = 0;
  std::int32_t performance = 0;
  std::int32_t efficiency = 0;
};

TEST(Chip, describesEachMachine) {
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

TEST(Chip, isNamedByItsHardwareOn32BitArm) {
  const test::TemporaryFolder root;
  const std::string cores =
      "model name : ARMv7 Processor rev 3 (v7l)\nCPU implementer : 0x41\nCPU part : 0xd08\n";
  root.write("proc/cpuinfo", cores + "\nHardware : BCM2711\n");
  EXPECT_EQ(LinuxChip(root.path()).brand(), "BCM2711");
  root.write("proc/cpuinfo", cores + "\nHardware : Generic DT based system\n");
  EXPECT_EQ(LinuxChip(root.path()).brand(), "Arm Cortex-A72");
}

TEST(Chip, countsTheCoresOfEachPackageWithoutATopology) {
  const test::TemporaryFolder root;
  std::string processors;
  for (const char* package : {"0", "0", "1"}) {
    processors += "processor : 0\nphysical id : " + std::string(package) + "\ncpu cores : 4\n\n";
  }
  root.write("proc/cpuinfo", processors);
  EXPECT_EQ(LinuxChip(root.path()).physicalCores(), 8);
  root.write("proc/cpuinfo", "processor : 0\n\nprocessor : 1\n");
  EXPECT_EQ(LinuxChip(root.path()).physicalCores(), 2);
}

TEST(Chip, hasNoLevelsWithOneKindOfCore) {
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
