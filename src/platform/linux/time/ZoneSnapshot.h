#pragma once

#include <cstdint>
#include <vector>

namespace kestrune::platform {

// A copy of the C library's current time zone, since the library itself knows only one zone at a time. Covers
// the year 2000 to 20 years after `now`; beyond that the nearest offset applies. Constructing one takes half
// a millisecond.
class ZoneSnapshot {
 public:
  // `now` is a Unix time.
  explicit ZoneSnapshot(std::int64_t now);

  // Seconds east of UTC at a Unix time.
  std::int64_t offset(std::int64_t unixSeconds) const;

 private:
  struct Change {
    std::int64_t from = 0;  // the first second with this offset
    std::int64_t offset = 0;
  };
  std::vector<Change> changes_;  // ascending, never empty
};

// Seconds east of UTC at a Unix time, in the C library's zone as of the last `tzset`; 0 for a time out of the
// library's range.
std::int64_t currentOffset(std::int64_t unixSeconds);

}  // namespace kestrune::platform
