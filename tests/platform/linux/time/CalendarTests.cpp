#include <array>
#include <chrono>
#include <cmath>
#include <cstdlib>
#include <ctime>
#include <limits>

#include <gtest/gtest.h>

#include "platform/linux/time/LinuxCalendar.h"

namespace kestrune::platform {
namespace {

using namespace std::chrono;

// An instant in UTC.
Date utc(int year, unsigned month, unsigned day, double hours) {
  const sys_days date = std::chrono::year(year) / std::chrono::month(month) / std::chrono::day(day);
  const auto seconds =
      static_cast<double>(duration_cast<std::chrono::seconds>(date.time_since_epoch()).count());
  return {seconds - unixTimeOfReferenceDate + hours * 3600};
}

Date fromUnix(std::int64_t seconds) {
  return {static_cast<double>(seconds) - unixTimeOfReferenceDate};
}

// As the C library tells it in the zone that is set.
std::string dayNow(std::int64_t unixSeconds) {
  const time_t time = unixSeconds;
  tm local{};
  localtime_r(&time, &local);
  std::array<char, 16> text{};
  std::strftime(text.data(), text.size(), "%Y-%m-%d", &local);
  return text.data();
}

class CalendarTest : public testing::Test {
 protected:
  ~CalendarTest() override { unsetenv("TZ"); }
  static void setZone(const char* zone) {
    setenv("TZ", zone, 1);
    tzset();
  }
  LinuxCalendar calendar;
};

TEST_F(CalendarTest, knowsDaysOf23And25Hours) {
  setZone("Europe/Madrid");
  const Date spring = utc(2024, 3, 30, 23);  // midnight of the 31st
  EXPECT_EQ(calendar.startOfDay(utc(2024, 3, 31, 20)), spring);
  EXPECT_EQ(calendar.addingDays(spring, 1), spring + 23 * 3600);
  const Date autumn = utc(2024, 10, 26, 22);  // midnight of the 27th
  EXPECT_EQ(calendar.startOfDay(utc(2024, 10, 27, 20)), autumn);
  EXPECT_EQ(calendar.addingDays(autumn, 1), autumn + 25 * 3600);
  EXPECT_EQ(calendar.addingDays(autumn + 25 * 3600, -1), autumn);
  EXPECT_EQ(calendar.addingDays(spring + 0.25, 1), spring + (23 * 3600 + 0.25));
}

TEST_F(CalendarTest, knowsDaysWithoutOrWithTwoMidnights) {
  setZone("America/Sao_Paulo");
  const Date firstInstant = utc(2018, 11, 4, 3);  // 01:00, right after 23:59:59
  EXPECT_EQ(calendar.startOfDay(utc(2018, 11, 4, 15)), firstInstant);
  EXPECT_EQ(calendar.startOfDay(firstInstant + -1), utc(2018, 11, 3, 3));
  EXPECT_EQ(calendar.addingDays(utc(2018, 11, 3, 3), 1), firstInstant);
  EXPECT_EQ(calendar.addingDays(utc(2018, 11, 3, 3.5), 1), firstInstant);
  setZone("Pacific/Apia");  // where the 30th of December 2011 never was
  EXPECT_EQ(calendar.addingDays(utc(2011, 12, 29, 10), 1), utc(2011, 12, 30, 10));
  setZone("America/Havana");  // 01:00 is followed by 00:00, and the first of the two begins the day
  EXPECT_EQ(calendar.startOfDay(utc(2023, 11, 5, 18)), utc(2023, 11, 5, 4));
  EXPECT_EQ(calendar.startOfDay(utc(2023, 11, 5, 5.5)), utc(2023, 11, 5, 4));
}

TEST_F(CalendarTest, namesStayInTheZoneInWhichTheyBegan) {
  setZone("Europe/Madrid");
  const auto madrid = calendar.dayFormatter();
  const Date evening = fromUnix(1778368500);  // 2026-05-09T23:15:00Z
  EXPECT_EQ(madrid(evening), "2026-05-10");
  EXPECT_EQ(calendar.hour(evening), 1);
  setZone("America/New_York");
  EXPECT_EQ(madrid(evening), "2026-05-10");
  EXPECT_EQ(calendar.dayFormatter()(evening), "2026-05-09");
  EXPECT_EQ(calendar.hour(evening), 19) << "the hour follows the zone";
}

// Zones that jump at midnight, by half an hour, by a whole day, twice within weeks, or in the other half of
// the year.
TEST_F(CalendarTest, agreesWithTheLibraryThroughEveryChange) {
  for (const auto* zone :
       {"America/Sao_Paulo", "Asia/Beirut", "America/Havana", "Australia/Lord_Howe", "Pacific/Apia",
        "Africa/Casablanca", "Africa/Cairo", "Asia/Gaza", "America/St_Johns", "Asia/Kathmandu",
        "America/Caracas", "America/Recife", "Antarctica/Troll", "UTC", "<-03>3<-02>,M3.5.0/-2,M10.5.0/-1"}) {
    setZone(zone);
    const auto format = calendar.dayFormatter();
    setZone("Asia/Tokyo");
    std::vector<std::string> names;
    constexpr std::int64_t first = 946684800;  // 2000
    const std::int64_t last = time(nullptr) + std::int64_t{20 * 365} * 86400;
    constexpr std::int64_t step = 12600;  // comes by every half hour of the day
    for (std::int64_t time = first; time < last; time += step) names.push_back(format(fromUnix(time)));
    setZone(zone);
    std::size_t i = 0;
    for (std::int64_t time = first; time < last; time += step)
      ASSERT_EQ(names[i++], dayNow(time)) << zone << time;
  }
}

TEST_F(CalendarTest, theHourIsThatOnTheWall) {
  setZone("America/Sao_Paulo");
  EXPECT_EQ(calendar.hour(fromUnix(1541300399)), 23);  // 2018-11-03, 23:59:59
  EXPECT_EQ(calendar.hour(fromUnix(1541300400)), 1);   // 2018-11-04, where there is no midnight
  setZone("Europe/Madrid");
  EXPECT_EQ(calendar.hour(fromUnix(1729987199)), 1);  // 2024-10-27
  for (const int seconds : {0, 3599, 3600, 7199}) {
    EXPECT_EQ(calendar.hour(fromUnix(1729987200 + seconds)), 2) << "twice";
  }
  EXPECT_EQ(calendar.hour(fromUnix(1729994400)), 3);
  setZone("Asia/Kathmandu");
  EXPECT_EQ(calendar.hour(fromUnix(-1)), 5) << "05:29:59 in 1970";
}

TEST_F(CalendarTest, noDateIsWithoutAName) {
  setZone("Asia/Tokyo");
  const auto format = calendar.dayFormatter();
  EXPECT_EQ(format(Date::distantPast), "0000-12-30") << "in the calendar that wasn't there yet";
  EXPECT_EQ(format(fromUnix(-14182940)), "1969-07-21");
  EXPECT_EQ(format(fromUnix(7258086000)), "2200-01-01");
  for (const double seconds : {1e300, -1e300, 1e14, -1e14}) {
    EXPECT_EQ(format({seconds}).find('/'), std::string::npos);
    EXPECT_EQ(calendar.hour({seconds}) / 24, 0);
  }
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
}  // namespace kestrune::platform
