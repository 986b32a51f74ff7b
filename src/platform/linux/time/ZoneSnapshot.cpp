#include "platform/linux/time/ZoneSnapshot.h"

#include <algorithm>
#include <ctime>
#include <iterator>

namespace kestrune::platform {
namespace {

constexpr std::int64_t earliest = 946684800;  // 2000-01-01T00:00:00Z
constexpr std::int64_t daySeconds = 86400;
constexpr std::int64_t yearsAhead = 20;
// No zone changes its offset and back in less time than this. (Some have done so within a week.)
constexpr std::int64_t step = 6 * daySeconds;

// The first second with the offset of `after`; the offset at `before` is another one.
std::int64_t firstWithOffsetOf(std::int64_t after, std::int64_t before) {
  const std::int64_t offset = currentOffset(after);
  while (after - before > 1) {
    const std::int64_t middle = before + (after - before) / 2;
    (currentOffset(middle) == offset ? after : before) = middle;
  }
  return after;
}

}  // namespace

std::int64_t currentOffset(std::int64_t unixSeconds) {
  const time_t time = unixSeconds;
  tm local{};
  return localtime_r(&time, &local) != nullptr ? local.tm_gmtoff : 0;
}

ZoneSnapshot::ZoneSnapshot(std::int64_t now) {
  tzset();
  changes_.push_back({earliest, currentOffset(earliest)});
  const std::int64_t latest = now + yearsAhead * 366 * daySeconds;
  for (std::int64_t time = earliest + step; time < latest + step; time += step) {
    const std::int64_t offset = currentOffset(time);
    if (offset == changes_.back().offset) continue;
    changes_.push_back({firstWithOffsetOf(time, time - step), offset});
  }
}

std::int64_t ZoneSnapshot::offset(std::int64_t unixSeconds) const {
  const auto next = std::ranges::upper_bound(changes_, unixSeconds, {}, &Change::from);
  return next == changes_.begin() ? next->offset : std::prev(next)->offset;
}

}  // namespace kestrune::platform
