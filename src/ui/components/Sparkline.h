#pragma once

#include <string>
#include <vector>

#include "ui/view/View.h"

namespace kestrune::ui {

// The heights of a series' points, from 0 (bottom) to 1 (top): scaled to the series' own range (a flat series
// at the middle), or read as fractions and clamped. NaN becomes 0; an infinite value becomes 0 or 1 by its
// sign and doesn't count towards the range.
std::vector<double> sparklineHeights(std::vector<double> values, bool autoScale);

struct DualSparklineHeights {
  std::vector<double> primary;
  std::vector<double> secondary;
};

// The same for two series on one scale from 0 to the largest value of both; all 0 if that is not above 0.
DualSparklineHeights dualSparklineHeights(std::vector<double> primary, std::vector<double> secondary);

// A line through a series, oldest value first; no line for fewer than two values. Fills the size it is given.
struct SparklineView {
  std::vector<double> values;
  Color color;
  bool autoScale = true;
  std::string label;  // what assistive tools call the chart, localizable

  View body() const;
  operator View() const { return body(); }
};

// Two lines on one scale, the primary one in front.
struct DualSparklineView {
  std::vector<double> primary;
  std::vector<double> secondary;
  Color primaryColor;
  Color secondaryColor;
  std::string label;

  View body() const;
  operator View() const { return body(); }
};

}  // namespace kestrune::ui
