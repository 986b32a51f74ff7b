#include "ui/components/Sparkline.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "ui/components/Fraction.h"

namespace kestrune::ui {
namespace {

constexpr double lineWidth = 1.5;

struct Range {
  double lo = std::numeric_limits<double>::infinity();
  double hi = -std::numeric_limits<double>::infinity();

  void include(const std::vector<double>& values) {
    for (const double value : values) {
      if (!std::isfinite(value)) continue;
      lo = std::min(lo, value);
      hi = std::max(hi, value);
    }
  }
};

}  // namespace

std::vector<double> sparklineHeights(std::vector<double> values, bool autoScale) {
  if (!autoScale) {
    for (double& value : values) value = clampedFraction(value);
    return values;
  }
  Range range;
  range.include(values);
  const double length = range.hi - range.lo;
  for (double& value : values) value = length > 0 ? clampedFraction((value - range.lo) / length) : 0.5;
  return values;
}

DualSparklineHeights dualSparklineHeights(std::vector<double> primary, std::vector<double> secondary) {
  Range range;
  range.include(primary);
  range.include(secondary);
  const auto scale = [maximum = range.hi](std::vector<double>& values) {
    for (double& value : values) value = maximum > 0 ? clampedFraction(value / maximum) : 0;
  };
  scale(primary);
  scale(secondary);
  return {std::move(primary), std::move(secondary)};
}

View SparklineView::body() const {
  std::vector<LineChartContent::Line> lines;
  lines.push_back({sparklineHeights(values, autoScale), color});
  return lineChart(std::move(lines), lineWidth).accessibilityElement(key(label));
}

View DualSparklineView::body() const {
  auto heights = dualSparklineHeights(primary, secondary);
  std::vector<LineChartContent::Line> lines;
  lines.reserve(2);
  lines.push_back({std::move(heights.secondary), secondaryColor.withOpacity(0.75)});
  lines.push_back({std::move(heights.primary), primaryColor});
  return lineChart(std::move(lines), lineWidth).accessibilityElement(key(label));
}

}  // namespace kestrune::ui
