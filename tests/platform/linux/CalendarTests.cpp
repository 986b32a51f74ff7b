#include <chrono>
#include <cmath>
#include <cstdlib>
#include <limits>

#include <gtest/gtest.h>

#include "platform/linux/LinuxCalendar.h"

namespace kestrune::linux_platform {
namespace {

using namespace std::chrono;

// An instant in UTC.
Date utc(int year, unsigned month, unsigned day, double hours) {
  const sys_days date = std::chrono::year(year) / std::chrono::month(month) / std::chrono::day(day);
  const auto seconds =
      static_cast<double>(duration_cast<std::chrono::seconds>(date.time_since_epoch()).count());
  return {seconds - unixTimeOfReferenceDate + hours * 3600};
}

class CalendarTest : public testing::Test {
 protected:
  ~CalendarTest() override { unsetenv("TZ"); }
  static void setZone(const char* zone) { setenv("TZ", zone, 1); }
  LinuxCalendar calendar;
};

TEST_F(CalendarTest, followsTheZoneWhenItChanges) {
  const Date noon = utc(2024, 5, 6, 12);
  setZone("UTC");
  EXPECT_EQ(calendar.startOfDay(noon), utc(2024, 5, 6, 0));
  setZone("Asia/Kolkata");
  EXPECT_EQ(calendar.startOfDay(noon), utc(2024, 5, 5, 18.5));
  setZone("America/New_York");
  EXPECT_EQ(calendar.startOfDay(noon), utc(2024, 5, 6, 4));
  EXPECT_EQ(calendar.startOfDay(noon + 0.75), utc(2024, 5, 6, 4));
}

TEST_F(CalendarTest, knowsDaysOf23And25Hours) {
  setZone("Europe/Madrid");
  const Date spring = utc(2024, 3, 30, 23);  // midnight of the 31st
  EXPECT_EQ(calendar.startOfDay(utc(2024, 3, 31, 20)), spring);
  EXPECT_EQ(calendar.addingDays(spring, 1), spring + 23 * 3600);
  const Date autumn = utc(2024, 10, 26, 22);  // midnight of the 27th
  EXPECT_EQ(calendar.startOfDay(utc(2024, 10, 27, 20)), autumn);
  EXPECT_EQ(calendar.addingDays(autumn, 1), autumn + 25 * 3600);
  EXPECT_EQ(calendar.addingDays(autumn + 25 * 3600, -1), autumn);
  EXPECT_EQ(calendar.addingDays(utc(2024, 3, 30, 9.5), 365), utc(2025, 3, 30, 8.5));
  EXPECT_EQ(calendar.addingDays(spring + 0.25, 1), spring + (23 * 3600 + 0.25));
}

TEST_F(CalendarTest, aTimeThatTheDayLacksIsTheNextThatExists) {
  setZone("America/Sao_Paulo");
  const Date firstInstant = utc(2018, 11, 4, 3);  // 01:00, right after 23:59:59
  EXPECT_EQ(calendar.startOfDay(utc(2018, 11, 4, 15)), firstInstant);
  EXPECT_EQ(calendar.startOfDay(firstInstant), firstInstant);
  EXPECT_EQ(calendar.startOfDay(firstInstant + -1), utc(2018, 11, 3, 3));
  EXPECT_EQ(calendar.addingDays(utc(2018, 11, 3, 3), 1), firstInstant);
  EXPECT_EQ(calendar.addingDays(utc(2018, 11, 3, 3.5), 1), firstInstant);
  EXPECT_EQ(calendar.addingDays(utc(2018, 11, 5, 2), -1), firstInstant);
  setZone("Pacific/Apia");  // where the 30th of December 2011 never was
  EXPECT_EQ(calendar.addingDays(utc(2011, 12, 29, 10), 1), utc(2011, 12, 30, 10));
}

TEST_F(CalendarTest, ofTwoMidnightsTheFirstBeginsTheDay) {
  setZone("America/Havana");  // 01:00 is followed by 00:00
  EXPECT_EQ(calendar.startOfDay(utc(2023, 11, 5, 18)), utc(2023, 11, 5, 4));
  EXPECT_EQ(calendar.startOfDay(utc(2023, 11, 5, 5.5)), utc(2023, 11, 5, 4));
}

TEST_F(CalendarTest, isAbsentOutOfRange) {
  setZone("UTC");
  EXPECT_EQ(calendar.startOfDay(Date::distantPast), Date::distantPast);
  EXPECT_TRUE(calendar.addingDays(utc(2024, 1, 1, 0), 40'000'000));
  EXPECT_FALSE(calendar.addingDays(utc(2024, 1, 1, 0), std::numeric_limits<int>::max()));
  EXPECT_FALSE(calendar.addingDays({1e300}, 1));
  EXPECT_FALSE(calendar.addingDays({std::nan("")}, 1));
  EXPECT_EQ(calendar.startOfDay({-1e300}).seconds, -1e300);
}

}  // namespace
}  // namespace kestrune::linux_platform
