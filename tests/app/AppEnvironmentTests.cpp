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

TEST_F(AppEnvironmentTest, samplesWithoutAnyView) {
  EXPECT_EQ(usage().size(), 1U);
  advance(999ms);
  EXPECT_EQ(usage().size(), 1U);
  advance(1ms);
  EXPECT_EQ(usage().size(), 2U);
}

TEST_F(AppEnvironmentTest, destructionEndsItsLoops) {
  advance(2s);
  environment.reset();
  settle();
  EXPECT_EQ(loop.nextDeadline(), std::nullopt);
}

TEST_F(AppEnvironmentTest, shiftingStopsAtToday) {
  auto& selected = environment->selectedDate;
  environment->shiftSelectedDate(1);
  EXPECT_EQ(selected.get(), std::nullopt);
  environment->shiftSelectedDate(0);
  EXPECT_EQ(selected.get(), std::nullopt);
  environment->shiftSelectedDate(-1);
  EXPECT_EQ(selected.get(), today + -daySeconds);
  environment->shiftSelectedDate(-6);
  EXPECT_EQ(selected.get(), today + -7 * daySeconds);
  environment->shiftSelectedDate(6);
  EXPECT_EQ(selected.get(), today + -daySeconds);
  environment->shiftSelectedDate(1);
  EXPECT_EQ(selected.get(), std::nullopt);
}

TEST_F(AppEnvironmentTest, dayOutsideTheCalendarIsIgnored) {
  environment->shiftSelectedDate(-3);
  calendar.isOutOfRange = true;
  environment->shiftSelectedDate(-1);
  EXPECT_EQ(environment->selectedDate.get(), today + -3 * daySeconds);
  environment->selectedDate.set(std::nullopt);
  environment->shiftSelectedDate(-1);
  EXPECT_EQ(environment->selectedDate.get(), std::nullopt);
}

}  // namespace
}  // namespace kestrune
