#include "platform/linux/ZoneSnapshot.h"

#include <algorithm>
#include <ctime>
#include <iterator>

namespace kestrune::linux_platform {
namespace {

constexpr std::int64_t earliest = 946684800;  // 2000-01-01T00:00:00Z
constexpr std::int64_t latest = 4102444800;   // 2100-01-01T00:00:00Z
// No zone has ever gone over to another offset and back within so short a time.
constexpr std::int64_t step = std::int64_t{7} * 86400;

// The first second after `before`, where another offset holds, that has the offset of `after`.
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

ZoneSnapshot::ZoneSnapshot() {
  tzset();
  changes_.push_back({earliest, currentOffset(earliest)});
  for (std::int64_t time = earliest + step; time < latest; time += step) {
    const std::int64_t offset = currentOffset(time);
    if (offset == changes_.back().offset) continue;
    changes_.push_back({firstWithOffsetOf(time, time - step), offset});
  }
}

std::int64_t ZoneSnapshot::offset(std::int64_t unixSeconds) const {
  const auto next = std::ranges::upper_bound(changes_, unixSeconds, {}, &Change::from);
  return next == changes_.begin() ? next->offset : std::prev(next)->offset;
}

}  // namespace kestrune::linux_platform
