#pragma once

#include <string>
#include <vector>

#include "ui/view/View.h"

namespace kestrune::ui {

// Where the points of one series lie between 0 (bottom) and 1 (top): scaled to the series' own range, a flat
// one in the middle, or read as fractions and clamped. Every result is within 0 and 1: what is no number lies
// at the bottom, and what is infinite at the edge it points to, without a say in the range.
std::vector<double> sparklineHeights(std::vector<double> values, bool autoScale);

struct DualSparklineHeights {
  std::vector<double> primary;
  std::vector<double> secondary;
};

// The same for two series on one scale from 0 to the largest value of both; all 0 if that is not above 0.
DualSparklineHeights dualSparklineHeights(std::vector<double> primary, std::vector<double> secondary);

// A line through a series, oldest value first; none of fewer than two values. Fills the size it is given.
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
