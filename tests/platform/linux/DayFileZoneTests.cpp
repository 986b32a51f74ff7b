#include <array>
#include <cstdlib>
#include <ctime>

#include <gmock/gmock.h>

#include "platform/linux/LinuxCalendar.h"

namespace kestrune::linux_platform {
namespace {

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

class DayFileZoneTest : public testing::Test {
 protected:
  ~DayFileZoneTest() override { unsetenv("TZ"); }
  static void setZone(const char* zone) {
    setenv("TZ", zone, 1);
    tzset();
  }
  LinuxCalendar calendar;
};

TEST_F(DayFileZoneTest, namesStayInTheZoneInWhichTheyBegan) {
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
TEST_F(DayFileZoneTest, agreesWithTheLibraryThroughEveryChange) {
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

TEST_F(DayFileZoneTest, everyDayHasItsOwnNameAtItsStart) {
  for (const auto* zone :
       {"America/Sao_Paulo", "Asia/Beirut", "America/Havana", "Europe/Madrid", "Asia/Amman"}) {
    setZone(zone);
    const auto format = calendar.dayFormatter();
    std::string previous;
    Date day = calendar.startOfDay(fromUnix(1500000000));
    for (int i = 0; i < 1000; ++i) {
      const std::string name = format(day);
      ASSERT_GT(name, previous) << zone;
      ASSERT_LE(calendar.hour(day), 1) << zone << ' ' << name;
      previous = name;
      day = calendar.startOfDay(day + 26 * 3600);  // no day has more
    }
  }
}

TEST_F(DayFileZoneTest, theHourIsThatOnTheWall) {
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

TEST_F(DayFileZoneTest, noDateIsWithoutAName) {
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

}  // namespace
}  // namespace kestrune::linux_platform
