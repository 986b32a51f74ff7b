#include <gmock/gmock.h>

#include "ui/MemoryTab.h"
#include "ui/StatusColors.h"
#include "ui/ViewFixture.h"

namespace kestrune::ui {
namespace {

using test::MountedViews;
using testing::Contains;
using testing::ElementsAre;
using testing::Not;

constexpr std::uint64_t gibibyte = 1073741824;

class MemoryTabTest : public test::ViewFixture {
 protected:
  MemoryTabTest() {
    computer.memory.pageBytes = gibibyte / 2;
    computer.memory.physical = 16 * gibibyte;
    computer.memory.pages = platform::VirtualMemoryPages{.wired = 4, .active = 10, .compressed = 1};
  }
  MountedViews memoryTab() { return tab<MemoryTab>(); }
  static std::vector<double> fractions(const MountedViews& tab) {
    std::vector<double> values;
    for (const auto& shown : tab.kind<BarContent>()) values.push_back(shown.view->as<BarContent>()->fraction);
    return values;
  }
  static Color usedFill(const MountedViews& tab) {
    return tab.kind<BarContent>().front().view->as<BarContent>()->fill;
  }
  void use(std::uint64_t halves) {
    computer.memory.pages = platform::VirtualMemoryPages{.wired = halves};
    env->memory->tick();
  }
};

TEST_F(MemoryTabTest, showsWhatTheMemoryIsUsedFor) {
  const auto tab = memoryTab();
  EXPECT_THAT(tab.texts(), ElementsAre("Memory Used", "7.5 GB", "16 GB", " total",                        //
                                       "Pressure", "nominal", "Wired", "2.0 GB", "Compressed", "512 MB",  //
                                       "Swap Used", "None",                                               //
                                       "Memory breakdown", "App Memory", "5.0 GB", "Wired", "2.0 GB",     //
                                       "Compressed", "0.5 GB", "Free", "8.5 GB",                          //
                                       "Usage history", "0%", "100%",                                     //
                                       "Top processes by memory", "Process", "Memory"));
  EXPECT_THAT(fractions(tab), ElementsAre(7.5 / 16, 5.0 / 16, 2.0 / 16, 0.5 / 16, 8.5 / 16));
}

TEST_F(MemoryTabTest, thePressureColoursTheBar) {
  auto tab = memoryTab();
  EXPECT_EQ(usedFill(tab), statusNeutralColor.withOpacity(0.8));
  use(24);
  update(tab);
  EXPECT_EQ(usedFill(tab), statusWarningColor.withOpacity(0.8));
  EXPECT_TRUE(tab.hasText("warning"));
  use(30);
  update(tab);
  EXPECT_EQ(usedFill(tab), statusCriticalColor.withOpacity(0.8));
  EXPECT_TRUE(tab.hasText("critical"));
}

TEST_F(MemoryTabTest, moreThanThereIsLeavesNothingFree) {
  auto tab = memoryTab();
  use(34);
  update(tab);
  EXPECT_TRUE(tab.hasText("-1.0 GB"));
  EXPECT_EQ(fractions(tab).back(), 0.0);
  EXPECT_EQ(fractions(tab).front(), 1.0);
}

TEST_F(MemoryTabTest, usedSwapAndLargeProcessesAreListed) {
  computer.memory.swap = platform::SwapUsage{.totalBytes = 8 * gibibyte, .usedBytes = 3 * gibibyte / 2};
  computer.processTable->processes[1] = {"large", "", {.residentBytes = 300 << 20}};
  auto tab = memoryTab();
  EXPECT_TRUE(tab.hasText("1.5 GB"));
  computer.advance(std::chrono::seconds(5));
  update(tab);
  EXPECT_TRUE(tab.hasText("large"));
  EXPECT_TRUE(tab.hasText("300 MB"));
}

TEST_F(MemoryTabTest, theSandboxWithholdsTheProcesses) {
  isSandboxed = true;
  auto tab = memoryTab();
  EXPECT_THAT(tab.texts(), Not(Contains("Top processes by memory")));
  EXPECT_TRUE(tab.hasText("Top processes unavailable"));
  tab.press("Dismiss");
  update(tab);
  EXPECT_FALSE(tab.hasText("Top processes unavailable"));
  EXPECT_TRUE(tab.hasText("Usage history"));
}

}  // namespace
}  // namespace kestrune::ui
