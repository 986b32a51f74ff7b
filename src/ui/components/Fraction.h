#pragma once

#include <algorithm>
#include <cmath>

namespace kestrune::ui {

// Within 0 and 1, whatever it is given; what is no number reads as 0.
inline double clampedFraction(double value) {
  return std::isnan(value) ? 0 : std::clamp(value, 0.0, 1.0);
}

// What part of a whole something is; 0 of a whole that is nothing. Not clamped.
inline double share(double part, double whole) {
  return whole > 0 ? part / whole : 0;
}

}  // namespace kestrune::ui
