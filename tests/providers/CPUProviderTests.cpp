#include "CPUProviderFixture.h"

namespace kestrune {
namespace {

using platform::ProcessorTicks;
using testing::ElementsAre;

class CPUProviderTest : public test::CPUProviderFixture {};
using CPUProviderDeathTest = CPUProviderTest;

TEST_F(CPUProviderTest, takesTheLoadFromTheDifferenceToTheLastRead) {
  processors.pass(1000, {900, 900});
  tick();
  tickAfter({50, 25});
  EXPECT_EQ(provider->current->usagePercent, 37.5);
  EXPECT_THAT(provider->current->coreUsages, ElementsAre(50.0, 25.0));
  EXPECT_THAT(provider->usageHistory->values(), ElementsAre(34.0, 37.5));
  EXPECT_THAT((*provider->history)[1].value.coreUsages, ElementsAre(50.0, 25.0));
}

TEST_F(CPUProviderTest, everyStateButIdleCountsAsBusy) {
  processors.ticks = {ProcessorTicks{}};
  tick();
  processors.ticks = {ProcessorTicks{.user = 10, .system = 20, .idle = 40, .nice = 30}};
  tick();
  EXPECT_EQ(provider->current->usagePercent, 60.0);
}

TEST_F(CPUProviderTest, menuBarShowsEveryThirdTickAsItStands) {
  std::vector<double> shown;
  for (int busy = 10; busy <= 70; busy += 10) {
    tickAfter({busy, busy});
    shown.push_back(provider->menuBarUsagePercent.get());
  }
  EXPECT_THAT(shown, ElementsAre(34.0, 34.0, 34.0, 40.0, 40.0, 40.0, 70.0));
}

TEST_F(CPUProviderTest, withoutAnyTicksTheTotalRepeatsAndTheCoresAreZero) {
  tick();
  tickAfter({50, 50});
  tick();
  EXPECT_EQ(provider->current->usagePercent, 50.0);
  EXPECT_THAT(provider->current->coreUsages, ElementsAre(0.0, 0.0));
}

TEST_F(CPUProviderTest, failedReadRepeatsAllFigures) {
  tick();
  tickAfter({50, 10});
  const auto good = processors.ticks;
  for (const auto& failure : {decltype(good)(), decltype(good)(std::in_place)}) {
    processors.ticks = failure;
    tick();
    EXPECT_EQ(provider->current->usagePercent, 30.0);
    EXPECT_THAT(provider->current->coreUsages, ElementsAre(50.0, 10.0));
  }
  EXPECT_THAT(provider->usageHistory->values(), ElementsAre(34.0, 30.0, 30.0, 30.0));

  // The next good read is compared with the last good one.
  processors.ticks = good;
  tickAfter({20, 20});
  EXPECT_EQ(provider->current->usagePercent, 20.0);
}

TEST_F(CPUProviderTest, processorsThatComeAndGo) {
  tick();
  tickAfter({50, 50});
  tickAfter({50, 50, 50});
  EXPECT_THAT(provider->current->coreUsages, ElementsAre(50.0, 50.0, 0.0)) << "the new one is 0 this once";
  tickAfter({50, 50, 50});
  EXPECT_THAT(provider->current->coreUsages, ElementsAre(50.0, 50.0, 50.0));

  // One is gone, and with it its ticks: the total has run backwards and repeats.
  tickAfter({80, 80});
  EXPECT_EQ(provider->current->usagePercent, 50.0);
  EXPECT_THAT(provider->current->coreUsages, ElementsAre(80.0, 80.0));
  tickAfter({80, 80});
  EXPECT_EQ(provider->current->usagePercent, 80.0);
}

TEST_F(CPUProviderTest, loadStaysWithinItsBounds) {
  processors.ticks = {{.user = 0, .idle = 1000}, {.user = 1000, .idle = 0}};
  tick();
  processors.ticks = {{.user = 500, .idle = 900},
                      {.user = 900, .idle = 500}};  // one counter of each runs backwards
  tick();
  EXPECT_THAT(provider->current->coreUsages, ElementsAre(100.0, 0.0));
  processors.ticks = {{.user = 2000, .idle = 0}, {.user = 2000, .idle = 0}};
  tick();
  EXPECT_EQ(provider->current->usagePercent, 100.0);
}

TEST_F(CPUProviderDeathTest, overflowEndsTheProcess) {
  constexpr auto most = std::numeric_limits<std::int32_t>::max();
  const auto tickWith = [this](std::vector<ProcessorTicks> ticks) {
    processors.ticks = std::move(ticks);
    provider->tick();
  };
  EXPECT_DEATH(tickWith({{.user = most, .system = 1}}), "overflow in the sum of processor ticks");
  EXPECT_DEATH(tickWith({{.idle = most}, {.idle = 1}}), "overflow in the sum of processor ticks");
  tickWith({{.user = most}});
  EXPECT_DEATH(tickWith({{.user = -2}}), "overflow in the difference of processor ticks");
}

TEST_F(CPUProviderTest, readsTheChipOnce) {
  const auto chipInfo = [this] {
    return CPUProvider(loop, processors, chip, std::make_shared<ProcessScanCache>(clock, processTable, *lane))
        .chipInfo;
  };
  chip.brandText = std::string("\0rest", 5);
  chip.modelText = "Board \xFF";
  chip.physical = 10;
  chip.performance = 6;
  EXPECT_EQ(chipInfo().name, "Board \xEF\xBF\xBD");
  EXPECT_EQ(chipInfo().coreDescription(), "10") << "one kind of core only";
  chip.efficiency = 4;
  EXPECT_EQ(chipInfo().coreDescription(), "4E + 6P");
}

}  // namespace
}  // namespace kestrune
