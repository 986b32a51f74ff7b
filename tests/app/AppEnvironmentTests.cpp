#include <gmock/gmock.h>

#include "app/AppEnvironment.h"
#include "support/ScriptedPlatform.h"

namespace kestrune {
namespace {

using namespace std::chrono_literals;

constexpr double daySeconds = 86400;

class AppEnvironmentTest : public testing::Test, public test::ScriptedPlatform {
 protected:
  const HistoryRing<double>& usage() { return *environment->cpu->usageHistory; }

  Preferences store{preferences};
  LocaleFormats formats{"en_US"};
  Catalogue texts;
  std::unique_ptr<AppEnvironment> environment =
      std::make_unique<AppEnvironment>(loop, platform, AppEnvironment::Surroundings{store, texts, formats});
  const Date today = calendar.startOfDay(clock.now());
};

TEST_F(AppEnvironmentTest, samplesAtOnceAndThenOnceASecondWithoutAnyView) {
  EXPECT_EQ(usage().size(), 1U);
  EXPECT_EQ(environment->cpu->menuBarUsagePercent.get(), 34.0);
  EXPECT_EQ(environment->selectedDate.get(), std::nullopt);
  advance(999ms);
  EXPECT_EQ(usage().size(), 1U);
  advance(1ms);
  EXPECT_EQ(usage().size(), 2U);
  advance(10s);
  EXPECT_EQ(usage().size(), 12U);
  EXPECT_EQ(environment->cpu->history->size(), 12U);
}

TEST_F(AppEnvironmentTest, intervalCountsFromTheEndOfATick) {
  settle();  // the loop's first sleep begins
  processors.onRead = [this] { clock.setContinuous(clock.continuousNow() + 250ms); };
  advance(5s);
  EXPECT_EQ(usage().size(), 5U) << "one sample every 1.25 s";
  const auto samples = usage().samples();
  EXPECT_EQ(samples[4].date - samples[3].date, 1.25);
}

TEST_F(AppEnvironmentTest, afterASuspendedHourThereIsOneTick) {
  advance(3s);
  const auto before = usage().size();
  clock.setContinuous(clock.continuousNow() + 1h);
  settle();
  EXPECT_EQ(usage().size(), before + 1);
  EXPECT_EQ(usage()[before].date - usage()[before - 1].date, 3600.0);
  advance(2s);
  EXPECT_EQ(usage().size(), before + 3);
}

TEST_F(AppEnvironmentTest, pausedSkipsTheTicksWhileTheLoopGoesOn) {
  advance(2s);
  environment->cpu->paused = true;
  advance(10s);
  EXPECT_EQ(usage().size(), 3U);
  environment->cpu->paused = false;
  advance(1s);
  EXPECT_EQ(usage().size(), 4U);
}

TEST_F(AppEnvironmentTest, scansTheProcessesEveryThirdSecond) {
  processTable->processes[10] = {"editor", "", {}};
  advance(29s);
  EXPECT_EQ(usage().size(), 30U);
  EXPECT_EQ(processTable->walks, 10);
}

TEST_F(AppEnvironmentTest, foldersWaitUntilTheyAreAsked) {
  advance(60s);
  EXPECT_EQ(folders.listings, 0);
  EXPECT_TRUE(*environment->folders->hasFullDiskAccess);
  environment->folders->scan();
  settle();
  EXPECT_EQ(folders.listings, 1);
}

TEST_F(AppEnvironmentTest, endingItEndsItsLoops) {
  advance(2s);
  environment.reset();
  settle();
  EXPECT_EQ(loop.nextDeadline(), std::nullopt);
}

TEST_F(AppEnvironmentTest, aDayAndMoreKeepsTheNewestDayInOrder) {
  const Date start = clock.now();
  const auto* storage = usage().buffer().data();
  int second = 0;
  processors.onRead = [&] {
    ++second;
    if (second % 20000 == 0) processors.ticks->assign(4, {});  // the platform begins anew before an overflow
    processors.pass(100, std::vector<std::int32_t>(4, second % 100));
  };
  advance(std::chrono::seconds(86400 + 500));
  ASSERT_EQ(usage().size(), 86400U);
  EXPECT_EQ(usage().buffer().data(), storage);
  const auto samples = usage().samples();
  EXPECT_EQ(samples.front().date, start + 501);
  EXPECT_EQ(samples.back().date, start + (daySeconds + 500));
  EXPECT_EQ(samples.front().value, 1.0);
  for (std::size_t i = 1; i < samples.size(); ++i) {
    ASSERT_EQ(samples[i].date - samples[i - 1].date, 1.0) << i;
  }
  EXPECT_EQ(environment->cpu->history->size(), 60U);
  EXPECT_EQ((*environment->cpu->history)[0].date, start + (daySeconds + 441));
}

TEST_F(AppEnvironmentTest, shiftingStaysInThePastAndStopsAtToday) {
  auto& selected = environment->selectedDate;
  environment->shiftSelectedDate(1);
  EXPECT_EQ(selected.get(), std::nullopt);
  environment->shiftSelectedDate(0);
  EXPECT_EQ(selected.get(), std::nullopt);
  environment->shiftSelectedDate(-1);
  EXPECT_EQ(selected.get(), today + -daySeconds);
  environment->shiftSelectedDate(0);
  EXPECT_EQ(selected.get(), today + -daySeconds);
  environment->shiftSelectedDate(-6);
  EXPECT_EQ(selected.get(), today + -7 * daySeconds);
  environment->shiftSelectedDate(6);
  EXPECT_EQ(selected.get(), today + -daySeconds);
  environment->shiftSelectedDate(1);
  EXPECT_EQ(selected.get(), std::nullopt);
}

TEST_F(AppEnvironmentTest, whatTheCalendarCannotTellLeavesTheDayAsItIs) {
  environment->shiftSelectedDate(-3);
  calendar.isOutOfRange = true;
  environment->shiftSelectedDate(-1);
  EXPECT_EQ(environment->selectedDate.get(), today + -3 * daySeconds);
  environment->selectedDate.set(std::nullopt);
  environment->shiftSelectedDate(-1);
  EXPECT_EQ(environment->selectedDate.get(), std::nullopt);
}

TEST_F(AppEnvironmentTest, selectingTheSameDayAgainNotifiesNobody) {
  environment->shiftSelectedDate(-1);
  int notified = 0;
  Dependencies reader([&] { ++notified; });
  reader.track([&] { return *environment->selectedDate; });
  environment->shiftSelectedDate(0);
  EXPECT_EQ(notified, 0);
  environment->shiftSelectedDate(-1);
  EXPECT_EQ(notified, 1);
}

}  // namespace
}  // namespace kestrune
