#include <gmock/gmock.h>

#include "app/AppEnvironment.h"
#include "support/ScriptedPlatform.h"

namespace kestrune {
namespace {

using namespace std::chrono_literals;

constexpr double daySeconds = 86400;

class AppEnvironmentTest : public testing::Test, public test::ScriptedPlatform {
 protected:
  Preferences store{preferences};
  LocaleFormats formats{"en_US"};
  Catalogue texts;
  std::unique_ptr<AppEnvironment> environment =
      std::make_unique<AppEnvironment>(loop, platform, AppEnvironment::Surroundings{store, texts, formats});
  const Date today = calendar.startOfDay(clock.now());
};

TEST_F(AppEnvironmentTest, samplesWithoutAnyViewUntilDestroyed) {
  const auto& usage = environment->cpu->usageHistory;
  EXPECT_EQ(usage->size(), 1U);
  advance(999ms);
  EXPECT_EQ(usage->size(), 1U);
  advance(1ms);
  EXPECT_EQ(usage->size(), 2U);
  environment.reset();
  settle();
  EXPECT_EQ(loop.nextDeadline(), std::nullopt);
}

TEST_F(AppEnvironmentTest, shiftingStopsAtTodayAndAtTheCalendarsEnd) {
  const auto& selected = environment->selectedDate;
  for (const auto& [shift, daysAgo] : {std::pair(1, 0), {0, 0}, {-1, 1}, {-6, 7}, {6, 1}, {1, 0}}) {
    environment->shiftSelectedDate(shift);
    EXPECT_EQ(*selected, daysAgo > 0 ? std::optional(today + -daysAgo * daySeconds) : std::nullopt) << shift;
  }
  environment->shiftSelectedDate(-3);
  calendar.isOutOfRange = true;
  environment->shiftSelectedDate(-1);
  EXPECT_EQ(*selected, today + -3 * daySeconds) << "a day outside the calendar";
  environment->selectedDate.set(std::nullopt);
  environment->shiftSelectedDate(-1);
  EXPECT_EQ(*selected, std::nullopt);
}

}  // namespace
}  // namespace kestrune
