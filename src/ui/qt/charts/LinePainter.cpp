#include "ui/qt/charts/LinePainter.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <vector>

namespace kestrune::ui::qt {
namespace {

// The thick line is everything within half its width of the thin one. Over each x that is a single interval,
// since the thin line is continuous. The ends of the interval are the outermost points reached by the
// segments and by the discs around the points. They are computed at a few places in each pixel column and
// interpolated in between.
class Edges {
 public:
  Edges(int columns, int samplesPerPixel, float radius)
      : radius_(radius),
        perPixel_(static_cast<float>(samplesPerPixel)),
        step_(1 / perPixel_),
        count_(columns * samplesPerPixel + 1),
        samples_(2 * static_cast<std::size_t>(count_), -std::numeric_limits<float>::infinity()),
        top_(samples_.data()),
        bottom_(top_ + count_) {
    std::fill(top_, bottom_, std::numeric_limits<float>::infinity());
  }

  const float* top() const { return top_; }
  const float* bottom() const { return bottom_; }

  void addDisc(LinePoint center) {
    const auto [from, to] = samplesWithin(center.x - radius_, center.x + radius_);
    for (int i = from; i <= to; ++i) {
      const float distance = position(i) - center.x;
      const float reach = std::sqrt(std::max(0.0F, radius_ * radius_ - distance * distance));
      extend(i, center.y - reach, center.y + reach);
    }
  }

  void addSegment(LinePoint a, LinePoint b) {
    const float run = b.x - a.x;
    const float rise = b.y - a.y;
    if (!(run > 0)) return;
    const float length = std::sqrt(run * run + rise * rise);
    const float slope = rise / run;
    // How far the edges are from the line, along x and along y.
    const float shift = radius_ * rise / length;
    const float offset = radius_ * length / run;
    const float atZero = a.y - slope * a.x;
    const float perSample = slope * step_;
    const auto [topFrom, topTo] = samplesWithin(a.x + shift, b.x + shift);
    for (int i = topFrom; i <= topTo; ++i) {
      const float y = atZero - offset + perSample * static_cast<float>(i);
      if (y < top_[i]) top_[i] = y;
    }
    const auto [bottomFrom, bottomTo] = samplesWithin(a.x - shift, b.x - shift);
    for (int i = bottomFrom; i <= bottomTo; ++i) {
      const float y = atZero + offset + perSample * static_cast<float>(i);
      if (y > bottom_[i]) bottom_[i] = y;
    }
  }

  // Closes the outline just before and after the line, less than one sample away.
  void addTips(LinePoint first, LinePoint last) {
    const int before = samplesWithin(first.x - radius_, first.x).first - 1;
    if (before >= 0) extend(before, first.y, first.y);
    const int after = samplesWithin(last.x, last.x + radius_).second + 1;
    if (after < count_) extend(after, last.y, last.y);
  }

 private:
  float position(int sample) const { return static_cast<float>(sample) * step_; }

  // First and last sample in the range; last < first if the range is empty.
  std::pair<int, int> samplesWithin(float from, float to) const {
    const auto last = static_cast<float>(count_ - 1);
    const float first = std::clamp(from * perPixel_, 0.0F, last + 1);
    const float end = std::clamp(to * perPixel_, -1.0F, last);
    // Rounds up and down inline; std::ceil and std::floor would be calls.
    const int start = static_cast<int>(first);
    return {start + (static_cast<float>(start) < first ? 1 : 0), static_cast<int>(end + 1) - 1};
  }

  void extend(int i, float top, float bottom) {
    top_[i] = std::min(top_[i], top);
    bottom_[i] = std::max(bottom_[i], bottom);
  }

  float radius_;
  float perPixel_;
  float step_;
  int count_;
  std::vector<float> samples_;
  float* top_;
  float* bottom_;
};

// How much of each pixel in one column is above an edge, as differences from below: `steps_[j]` is row j
// minus row j + 1.
class Column {
 public:
  explicit Column(int rows) : steps_(static_cast<std::size_t>(rows) + 1, 0.0F) {}

  // Adds the area above the straight edge from y0 to y1 (both at least 1), which is `dx` wide; subtracts it
  // if `dx` is negative.
  void addAbove(float y0, float y1, float dx) {
    if (y0 > y1) std::swap(y0, y1);
    int row = static_cast<int>(y0);
    const int lastRow = static_cast<int>(y1);
    if (row == lastRow) {
      addWithin(row, (y0 + y1) / 2, dx);
      return;
    }
    const float perRow = dx / (y1 - y0);
    addWithin(row, (y0 + static_cast<float>(row + 1)) / 2, (static_cast<float>(row + 1) - y0) * perRow);
    for (++row; row < lastRow; ++row) addWithin(row, static_cast<float>(row) + 0.5F, perRow);
    addWithin(lastRow, (static_cast<float>(lastRow) + y1) / 2, (y1 - static_cast<float>(lastRow)) * perRow);
  }

  // Returns the step of the row and resets it.
  float take(int row) { return std::exchange(steps_[static_cast<std::size_t>(row)], 0.0F); }

 private:
  // Adds an edge that stays within one row, at `y` on average.
  void addWithin(int row, float y, float dx) {
    const float part = (y - static_cast<float>(row)) * dx;
    const auto i = static_cast<std::size_t>(row);
    steps_[i] += part;
    steps_[i - 1] += dx - part;
  }

  std::vector<float> steps_;
};

// `factor` is 0 to 255.
QRgb scaled(QRgb color, unsigned factor) {
  const auto divided = [](std::uint32_t pair) {
    return ((pair + ((pair >> 8U) & 0xff00ffU) + 0x800080U) >> 8U) & 0xff00ffU;
  };
  const std::uint32_t even = divided((color & 0xff00ffU) * factor);
  const std::uint32_t odd = divided(((color >> 8U) & 0xff00ffU) * factor);
  return even | (odd << 8U);
}

void blend(QRgb& pixel, QRgb color, float coverage) {
  const auto factor = static_cast<unsigned>(std::clamp(coverage, 0.0F, 1.0F) * 510 + 1) / 2;
  if (factor == 0) return;
  const QRgb source = factor == 255 ? color : scaled(color, factor);
  pixel = pixel == 0 ? source : source + scaled(pixel, 255 - static_cast<unsigned>(qAlpha(source)));
}

// True if the edge is nearly straight over one pixel, as it is everywhere but at joins.
bool isStraight(const float* y, int samples) {
  constexpr float slack = 0.02F;
  for (int i = 1; i < samples; ++i) {
    if (std::abs(y[i - 1] - 2 * y[i] + y[i + 1]) > slack) return false;
  }
  return true;
}

// Two samples per column are enough for an edge, unless joins are close together.
int samplesPerPixel(std::span<const LinePoint> points, int columns) {
  return points.size() * 2 > static_cast<std::size_t>(columns) ? 4 : 2;
}

struct RowRange {
  int first = 0;
  int last = -1;
};

// Adds the area between both edges over one column; returns the rows that may have changed.
RowRange addColumn(Column& column, const float* top, const float* bottom, int samples) {
  const float share = 1.0F / static_cast<float>(samples);
  float highest = std::numeric_limits<float>::infinity();
  float lowest = 0;
  bool isWhole = true;
  for (int i = 0; i <= samples; ++i) {
    // Before or after the line.
    if (top[i] > bottom[i]) {
      isWhole = false;
      continue;
    }
    highest = std::min(highest, top[i]);
    lowest = std::max(lowest, bottom[i]);
  }
  if (highest > lowest) return {};
  const auto add = [&](const float* y, float sign) {
    if (isWhole && isStraight(y, samples)) {
      column.addAbove(y[0], y[samples], sign);
      return;
    }
    for (int i = 0; i < samples; ++i) {
      const bool isInside = top[i] <= bottom[i] && top[i + 1] <= bottom[i + 1];
      if (isInside) column.addAbove(y[i], y[i + 1], sign * share);
    }
  };
  add(bottom, 1);
  add(top, -1);
  return {static_cast<int>(highest) - 1, static_cast<int>(lowest)};
}

}  // namespace

void paintAscendingLine(QImage& image, std::span<const LinePoint> points, float width, QRgb color) {
  if (points.size() < 2 || image.isNull() || !(width > 0)) return;
  // Rows are counted from `margin` above the image, so that parts outside it need no special cases.
  const int margin = static_cast<int>(std::ceil(width * 1.5F)) + 2;
  const int rows = image.height() + 2 * margin;
  const auto lowest = static_cast<float>(image.height()) + width;
  const auto shifted = [&](LinePoint point) {
    const float y = point.y > -width ? std::min(point.y, lowest) : -width;
    return LinePoint{point.x, y + static_cast<float>(margin)};
  };
  const int samples = samplesPerPixel(points, image.width());
  Edges edges(image.width(), samples, width / 2);
  for (std::size_t i = 0; i < points.size(); ++i) {
    edges.addDisc(shifted(points[i]));
    if (i > 0) edges.addSegment(shifted(points[i - 1]), shifted(points[i]));
  }
  edges.addTips(shifted(points.front()), shifted(points.back()));

  const auto stride = static_cast<std::size_t>(image.bytesPerLine()) / sizeof(QRgb);
  auto* pixel = reinterpret_cast<QRgb*>(image.bits());
  const float* top = edges.top();
  const float* bottom = edges.bottom();
  Column column(rows);
  for (int x = 0; x < image.width(); ++x) {
    const RowRange touched = addColumn(column, top, bottom, samples);
    float coverage = 0;
    for (int row = touched.last; row >= touched.first; --row) {
      coverage += column.take(row);
      const int y = row - margin;
      if (y >= 0 && y < image.height()) blend(pixel[static_cast<std::size_t>(y) * stride], color, coverage);
    }
    ++pixel;
    top += samples;
    bottom += samples;
  }
}

}  // namespace kestrune::ui::qt
