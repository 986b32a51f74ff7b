#include <chrono>
#include <cmath>
#include <cstdlib>
#include <ctime>
#include <iomanip>
#include <limits>
#include <sstream>

#include <gtest/gtest.h>

#include "platform/linux/time/LinuxCalendar.h"

namespace kestrune::platform {
namespace {

using namespace std::chrono;

Date fromUnix(std::int64_t seconds) {
  return {static_cast<double>(seconds) - unixTimeOfReferenceDate};
}

// An instant in UTC.
Date utc(int year, unsigned month, unsigned day, double hours) {
  const sys_days date = std::chrono::year(year) / std::chrono::month(month) / std::chrono::day(day);
  return fromUnix(duration_cast<std::chrono::seconds>(date.time_since_epoch()).count()) + hours * 3600;
}

// The date according to the C library in the current zone.
std::string localDate(time_t unixSeconds) {
  tm local{};
  localtime_r(&unixSeconds, &local);
  std::ostringstream text;
  text << std::put_time(&local, "%F");
  return text.str();
}

class CalendarTest : public testing::Test {
 protected:
  ~CalendarTest() override { unsetenv("TZ"); }
  static void setZone(const char* zone) {
    setenv("TZ", zone, 1);
    tzset();
  }
  LinuxCalendar& in(const char* zone) {
    setZone(zone);
    return calendar;
  }
  LinuxCalendar calendar;
};

TEST_F(CalendarTest, daysStartAtTheirFirstInstant) {
  EXPECT_EQ(in("Europe/Madrid").startOfDay(utc(2024, 3, 31, 20)), utc(2024, 3, 30, 23));
  EXPECT_EQ(in("Europe/Madrid").startOfDay(utc(2024, 10, 27, 20)), utc(2024, 10, 26, 22));
  // 23:59:59 is followed by 01:00.
  EXPECT_EQ(in("America/Sao_Paulo").startOfDay(utc(2018, 11, 4, 15)), utc(2018, 11, 4, 3));
  EXPECT_EQ(in("America/Sao_Paulo").startOfDay(utc(2018, 11, 4, 3) + -1), utc(2018, 11, 3, 3));
  // 01:00 is followed by 00:00 again.
  EXPECT_EQ(in("America/Havana").startOfDay(utc(2023, 11, 5, 18)), utc(2023, 11, 5, 4));
  EXPECT_EQ(in("America/Havana").startOfDay(utc(2023, 11, 5, 5.5)), utc(2023, 11, 5, 4));
  for (const Date far : {Date::distantPast, Date{-1e300}}) EXPECT_EQ(in("UTC").startOfDay(far), far);
}

TEST_F(CalendarTest, addingDaysKeepsTheTimeOfDay) {
  EXPECT_EQ(in("Europe/Madrid").addingDays(utc(2024, 3, 30, 23), 1), utc(2024, 3, 31, 22));
  EXPECT_EQ(in("Europe/Madrid").addingDays(utc(2024, 3, 30, 23) + 0.25, 1), utc(2024, 3, 31, 22) + 0.25);
  EXPECT_EQ(in("Europe/Madrid").addingDays(utc(2024, 10, 26, 22), 1), utc(2024, 10, 27, 23));
  EXPECT_EQ(in("Europe/Madrid").addingDays(utc(2024, 10, 27, 23), -1), utc(2024, 10, 26, 22));
  // A day without midnight, and a zone without 30 December 2011.
  EXPECT_EQ(in("America/Sao_Paulo").addingDays(utc(2018, 11, 3, 3), 1), utc(2018, 11, 4, 3));
  EXPECT_EQ(in("America/Sao_Paulo").addingDays(utc(2018, 11, 3, 3.5), 1), utc(2018, 11, 4, 3));
  EXPECT_EQ(in("Pacific/Apia").addingDays(utc(2011, 12, 29, 10), 1), utc(2011, 12, 30, 10));

  EXPECT_TRUE(in("UTC").addingDays(utc(2024, 1, 1, 0), 40'000'000));
  EXPECT_FALSE(in("UTC").addingDays(utc(2024, 1, 1, 0), std::numeric_limits<int>::max()));
  for (const double seconds : {1e300, std::nan("")}) EXPECT_FALSE(in("UTC").addingDays({seconds}, 1));
}

TEST_F(CalendarTest, formattersKeepTheirZone) {
  setZone("Europe/Madrid");
  const auto madrid = calendar.dayFormatter();
  const Date evening = utc(2026, 5, 9, 23.25);
  EXPECT_EQ(madrid(evening), "2026-05-10");
  EXPECT_EQ(calendar.hour(evening), 1);
  setZone("America/New_York");
  EXPECT_EQ(madrid(evening), "2026-05-10");
  EXPECT_EQ(calendar.dayFormatter()(evening), "2026-05-09");
  EXPECT_EQ(calendar.hour(evening), 19) << "the hour follows the zone";
}

// Zones that change at midnight, by half an hour, by a whole day, twice within weeks, or in the southern
// summer.
TEST_F(CalendarTest, formattersAgreeWithTheLibraryThroughEveryChange) {
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
    constexpr std::int64_t step = 12600;  // reaches every half hour of the day
    for (std::int64_t time = first; time < last; time += step) names.push_back(format(fromUnix(time)));
    setZone(zone);
    for (std::size_t i = 0; i < names.size(); ++i) {
      ASSERT_EQ(names[i], localDate(first + static_cast<std::int64_t>(i) * step)) << zone << ' ' << i;
    }
  }
}

TEST_F(CalendarTest, theHourIsThatOfAWallClock) {
  EXPECT_EQ(in("America/Sao_Paulo").hour(utc(2018, 11, 4, 3) + -1), 23);
  EXPECT_EQ(in("America/Sao_Paulo").hour(utc(2018, 11, 4, 3)), 1);
  EXPECT_EQ(in("Europe/Madrid").hour(utc(2024, 10, 27, 0) + -1), 1);
  // 02:00 to 03:00 comes twice.
  for (const double hours : {0.0, 0.999, 1.0, 1.999}) {
    EXPECT_EQ(in("Europe/Madrid").hour(utc(2024, 10, 27, hours)), 2) << hours;
  }
  EXPECT_EQ(in("Europe/Madrid").hour(utc(2024, 10, 27, 2)), 3);
  EXPECT_EQ(in("Asia/Kathmandu").hour(fromUnix(-1)), 5);
}

TEST_F(CalendarTest, formatsDatesOutOfRange) {
  setZone("Asia/Tokyo");
  const auto format = calendar.dayFormatter();
  EXPECT_EQ(format(Date::distantPast), "0000-12-30") << "proleptic";
  EXPECT_EQ(format(utc(1969, 7, 20, 20.3)), "1969-07-21");
  EXPECT_EQ(format(utc(2199, 12, 31, 15)), "2200-01-01");
  for (const double seconds : {1e300, -1e300, 1e14, -1e14}) {
    EXPECT_EQ(format({seconds}).find('/'), std::string::npos);
    EXPECT_EQ(calendar.hour({seconds}) / 24, 0);
  }
}

}  // namespace
}  // namespace kestrune::platform
