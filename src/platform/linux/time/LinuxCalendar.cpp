#include "platform/linux/time/LinuxCalendar.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <ctime>

#include "platform/linux/time/ZoneSnapshot.h"

namespace kestrune::platform {
namespace {

constexpr std::int64_t daySeconds = 86400;
// About two million years on either side of 1970. The C library counts years in an int, which is far more.
constexpr std::int64_t maxUnixSeconds = daySeconds * 366 * 2'000'000;

// An instant in whole seconds of Unix time plus a fraction of a second.
struct Instant {
  std::int64_t seconds = 0;
  double fraction = 0;
};

std::optional<Instant> instantOf(Date date) {
  const double whole = std::floor(date.seconds);
  if (!(std::abs(whole) < static_cast<double>(maxUnixSeconds))) return std::nullopt;
  return Instant{static_cast<std::int64_t>(whole + unixTimeOfReferenceDate), date.seconds - whole};
}

Date dateOf(std::int64_t unixSeconds, double fraction) {
  return {static_cast<double>(unixSeconds) - unixTimeOfReferenceDate + fraction};
}

// What a wall clock shows, encoded as if it were UTC.
std::int64_t wallTime(std::int64_t unixSeconds) {
  return unixSeconds + currentOffset(unixSeconds);
}

// The first instant at which a wall clock shows `wall`, or has skipped it.
std::int64_t firstInstantShowing(std::int64_t wall) {
  // No zone is more than a day from UTC, so these are before and after the instant, with at most one change
  // of the offset in between.
  const auto offset = [](std::int64_t unixSeconds) { return wallTime(unixSeconds) - unixSeconds; };
  const std::int64_t a = wall - offset(wall - daySeconds);
  const std::int64_t b = wall - offset(wall + daySeconds);
  std::int64_t early = std::min(a, b);
  std::int64_t late = std::max(a, b);
  if (wallTime(early) == wall) return early;
  if (wallTime(late) == wall) return late;
  while (late - early > 1) {
    const std::int64_t middle = early + (late - early) / 2;
    (wallTime(middle) >= wall ? late : early) = middle;
  }
  return late;
}

std::int64_t startOfWallDay(std::int64_t wall) {
  const std::int64_t intoDay = wall % daySeconds;
  return wall - (intoDay < 0 ? intoDay + daySeconds : intoDay);
}

// The date that a wall clock shows.
std::string dayText(std::int64_t wall) {
  const time_t time = wall;
  tm parts{};
  gmtime_r(&time, &parts);
  std::array<char, 40> text{};
  std::snprintf(text.data(), text.size(), "%04d-%02d-%02d", parts.tm_year + 1900, parts.tm_mon + 1,
                parts.tm_mday);
  return text.data();
}

}  // namespace

Date LinuxCalendar::startOfDay(Date date) {
  tzset();
  const auto instant = instantOf(date);
  if (!instant) return date;
  return dateOf(firstInstantShowing(startOfWallDay(wallTime(instant->seconds))), 0);
}

std::optional<Date> LinuxCalendar::addingDays(Date date, int days) {
  tzset();
  const auto instant = instantOf(date);
  if (!instant) return std::nullopt;
  const std::int64_t wall = wallTime(instant->seconds) + days * daySeconds;
  if (std::abs(wall) > maxUnixSeconds) return std::nullopt;
  const std::int64_t there = firstInstantShowing(wall);
  const bool isExact = wallTime(there) == wall;
  return dateOf(there, isExact ? instant->fraction : 0);
}

int LinuxCalendar::secondOfDay(Date date) {
  tzset();
  const auto instant = instantOf(date);
  if (!instant) return 0;
  const std::int64_t wall = wallTime(instant->seconds);
  return static_cast<int>(wall - startOfWallDay(wall));
}

std::function<std::string(Date)> LinuxCalendar::dayFormatter() {
  return [zone = ZoneSnapshot(time(nullptr))](Date date) {
    const auto instant = instantOf(date);
    const std::int64_t seconds = instant            ? instant->seconds
                                 : date.seconds < 0 ? -maxUnixSeconds
                                                    : maxUnixSeconds;
    return dayText(seconds + zone.offset(seconds));
  };
}

}  // namespace kestrune::platform
