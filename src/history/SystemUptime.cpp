#include "history/SystemUptime.h"

#include <algorithm>

namespace kestrune {

SystemUptime systemUptime(platform::SystemFacts& facts, Date now) {
  constexpr std::int64_t secondsPerDay = 86400;
  constexpr std::int64_t secondsPerHour = 3600;
  constexpr std::int64_t secondsPerMinute = 60;
  const auto seconds = static_cast<std::int64_t>(now.seconds + unixTimeOfReferenceDate);
  const std::int64_t up = std::max<std::int64_t>(0, seconds - facts.bootTime().value_or(0));
  return {.days = up / secondsPerDay,
          .hours = up % secondsPerDay / secondsPerHour,
          .minutes = up % secondsPerHour / secondsPerMinute};
}

}  // namespace kestrune
