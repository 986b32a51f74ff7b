#pragma once

#include <cstdint>
#include <vector>

namespace kestrune::platform {

// The C library's time zone as it stood when the object was made: the library itself knows one zone only, the
// present one. It holds from the year 2000 to 20 years from `now`; before and after that the nearest offset
// stands. Making one takes half a millisecond.
class ZoneSnapshot {
 public:
  // `now` is a Unix time.
  explicit ZoneSnapshot(std::int64_t now);

  // Seconds east of UTC at a Unix time.
  std::int64_t offset(std::int64_t unixSeconds) const;

 private:
  struct Change {
    std::int64_t from = 0;  // the first second at which the offset holds
    std::int64_t offset = 0;
  };
  std::vector<Change> changes_;  // ascending, never empty
};

// Seconds east of UTC at a Unix time, in the C library's zone as `tzset` last saw it; 0 for a time beyond
// what the library can tell.
std::int64_t currentOffset(std::int64_t unixSeconds);

}  // namespace kestrune::platform
