#pragma once

#include <algorithm>
#include <cmath>

namespace kestrune::ui {

// Within 0 and 1, whatever it is given; what is no number reads as 0.
inline double clampedFraction(double value) {
  return std::isnan(value) ? 0 : std::clamp(value, 0.0, 1.0);
}

}  // namespace kestrune::ui
