#include <gmock/gmock.h>

#include "support/Providers.h"

namespace kestrune {
namespace {

using namespace std::chrono_literals;
using platform::ProcessorTicks;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

// A provider that has not been started, over a machine with two processors.
class CPUProviderTest : public testing::Test, public test::ScriptedPlatform {
 protected:
  CPUProviderTest() { processors.ticks.emplace(2); }

  // Lets a second of 100 ticks pass in which the processors were busy for some of them, then ticks.
  void tickAfter(const std::vector<std::int32_t>& busy) {
    processors.pass(100, busy);
    tick();
  }
  void tick(int times = 1) {
    for (int i = 0; i < times; ++i) {
      clock.setContinuous(clock.continuousNow() + 1s);
      provider->tick();
      settle();
    }
  }

  std::shared_ptr<CPUProvider> provider = test::Providers(*this).cpu;
};
using CPUProviderDeathTest = CPUProviderTest;

TEST_F(CPUProviderTest, loadIsTheDifferenceToTheLastRead) {
  processors.pass(1000, {900, 900});
  tick();
  tickAfter({50, 25});
  EXPECT_EQ(provider->current->usagePercent, 37.5);
  EXPECT_THAT(provider->current->coreUsages, ElementsAre(50.0, 25.0));
  EXPECT_THAT(provider->usageHistory->values(), ElementsAre(34.0, 37.5));
  EXPECT_THAT((*provider->history)[1].value.coreUsages, ElementsAre(50.0, 25.0));
  tick();
  EXPECT_EQ(provider->current->usagePercent, 37.5) << "without new ticks the total repeats";
  EXPECT_THAT(provider->current->coreUsages, ElementsAre(0.0, 0.0));
}

TEST_F(CPUProviderTest, menuBarShowsEveryThirdTick) {
  std::vector<double> shown;
  for (int busy = 10; busy <= 70; busy += 10) {
    tickAfter({busy, busy});
    shown.push_back(provider->menuBarUsagePercent.get());
  }
  EXPECT_THAT(shown, ElementsAre(34.0, 34.0, 34.0, 40.0, 40.0, 40.0, 70.0));
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

TEST_F(CPUProviderTest, processorsMayAppearAndDisappear) {
  tick();
  tickAfter({50, 50});
  tickAfter({50, 50, 50});
  EXPECT_THAT(provider->current->coreUsages, ElementsAre(50.0, 50.0, 0.0)) << "the new one starts at 0";
  tickAfter({50, 50, 50});
  EXPECT_THAT(provider->current->coreUsages, ElementsAre(50.0, 50.0, 50.0));

  // One disappeared with its ticks: the total ran backwards and repeats.
  tickAfter({80, 80});
  EXPECT_EQ(provider->current->usagePercent, 50.0);
  EXPECT_THAT(provider->current->coreUsages, ElementsAre(80.0, 80.0));
  tickAfter({80, 80});
  EXPECT_EQ(provider->current->usagePercent, 80.0);
}

TEST_F(CPUProviderTest, loadCountsAllButIdleWithinItsBounds) {
  const auto readTicks = [&](std::vector<ProcessorTicks> ticks) {
    processors.ticks = std::move(ticks);
    tick();
    return provider->current->usagePercent;
  };
  readTicks({{}});
  EXPECT_EQ(readTicks({{.user = 10, .system = 20, .idle = 40, .nice = 30}}), 60.0);

  // One counter of each processor runs backwards.
  readTicks({{.user = 0, .idle = 1000}, {.user = 1000, .idle = 0}});
  readTicks({{.user = 500, .idle = 900}, {.user = 900, .idle = 500}});
  EXPECT_THAT(provider->current->coreUsages, ElementsAre(100.0, 0.0));
  EXPECT_EQ(readTicks({{.user = 2000, .idle = 0}, {.user = 2000, .idle = 0}}), 100.0);
}

TEST_F(CPUProviderDeathTest, overflowEndsTheProcess) {
  constexpr auto max = std::numeric_limits<std::int32_t>::max();
  const auto tickWith = [this](std::vector<ProcessorTicks> ticks) {
    processors.ticks = std::move(ticks);
    provider->tick();
  };
  EXPECT_DEATH(tickWith({{.user = max, .system = 1}}), "overflow in the sum of processor ticks");
  EXPECT_DEATH(tickWith({{.idle = max}, {.idle = 1}}), "overflow in the sum of processor ticks");
  tickWith({{.user = max}});
  EXPECT_DEATH(tickWith({{.user = -2}}), "overflow in the difference of processor ticks");
}

TEST_F(CPUProviderTest, readsTheChipOnce) {
  const auto chipInfo = [this] { return test::Providers(*this).cpu->chipInfo; };
  chip.brandText = std::string("\0rest", 5);
  chip.modelText = "Board \xFF";
  chip.physical = 10;
  chip.performance = 6;
  EXPECT_EQ(chipInfo().name, "Board \xEF\xBF\xBD");
  EXPECT_EQ(chipInfo().coreDescription(), "10") << "one kind of core only";
  chip.efficiency = 4;
  EXPECT_EQ(chipInfo().coreDescription(), "4E + 6P");
}

// When the processes are scanned, where, and what happens with the result.
class ProcessScanTest : public CPUProviderTest {
 protected:
  ProcessScanTest() {
    processTable->processes[10] = {"compiler", "/usr/bin/compiler", {.residentBytes = 4096}};
    processTable->processes[11] = {"idler", "", {}};
  }

  // Seconds in which the compiler used half of one processor.
  void compile(int seconds) {
    for (int i = 0; i < seconds; ++i) {
      processTable->processes[10].info.userNanoseconds += 500'000'000;
      tick();
    }
  }

  const std::vector<CPUSnapshot::ProcessInfo>& top() { return provider->current->topProcesses; }
};

TEST_F(ProcessScanTest, firstScanClearsTheDemonstrationAndTheSecondFillsTheList) {
  compile(2);
  EXPECT_THAT(top(), SizeIs(3));
  compile(1);
  EXPECT_THAT(top(), IsEmpty());
  EXPECT_THAT((*provider->history)[2].value.topProcesses, SizeIs(3)) << "the tick that began the scan";

  compile(2);
  EXPECT_THAT(top(), IsEmpty());
  compile(1);
  ASSERT_THAT(top(), SizeIs(1));
  EXPECT_EQ(top()[0].name, "compiler");
  EXPECT_DOUBLE_EQ(top()[0].cpuPercent, 50.0);
  EXPECT_EQ(top()[0].executablePath, "/usr/bin/compiler");
  EXPECT_EQ(processTable->walks, 2);
}

TEST_F(ProcessScanTest, runsOneScanAtATimeAndCatchesUp) {
  holdsLane = true;
  tick(8);
  EXPECT_EQ(lane->waiting(), 1U);
  EXPECT_EQ(processTable->walks, 0);
  lane->run();
  settle();
  EXPECT_THAT(top(), IsEmpty());
  EXPECT_EQ(lane->waiting(), 0U);

  // The ticks during the scan count, so the next scan doesn't wait for three more.
  tick();
  EXPECT_EQ(lane->waiting(), 1U);
  lane->run();
  settle();
  tick(2);
  EXPECT_EQ(lane->waiting(), 0U);
  tick();
  EXPECT_EQ(lane->waiting(), 1U);
}

TEST_F(ProcessScanTest, providerMayBeDestroyedDuringAScan) {
  holdsLane = true;
  provider->start(1s);
  advance(2s);
  ASSERT_EQ(lane->waiting(), 1U);
  const std::weak_ptr<CPUProvider> gone = provider;
  provider.reset();
  EXPECT_TRUE(gone.expired());
  holdsLane = false;
  settle();
  EXPECT_EQ(processTable->walks, 1);
  EXPECT_EQ(loop.nextDeadline(), std::nullopt) << "its loop has ended";
}

}  // namespace
}  // namespace kestrune
