#pragma once

#include <algorithm>
#include <cmath>

namespace kestrune::ui {

// Clamps to [0, 1]; NaN becomes 0.
inline double clampedFraction(double value) {
  return std::isnan(value) ? 0 : std::clamp(value, 0.0, 1.0);
}

// `part` divided by `whole`; 0 if there is no whole. Not clamped.
inline double share(double part, double whole) {
  return whole > 0 ? part / whole : 0;
}

}  // namespace kestrune::ui
