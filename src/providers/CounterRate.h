#pragma once

#include <cstdint>

namespace kestrune {

// Readings closer together than this yield no new rate: so short a span would make it a guess.
inline constexpr double shortestRateSpan = 0.1;  // seconds; a rate needs more

// The growth of a cumulative counter per second over `seconds`, which is above 0. A counter that fell,
// because something went out of the sum or began anew, yields 0.
inline double counterRate(std::uint64_t now, std::uint64_t before, double seconds) {
  return now < before ? 0 : static_cast<double>(now - before) / seconds;
}

}  // namespace kestrune
