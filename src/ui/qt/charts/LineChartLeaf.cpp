#include "ui/qt/charts/LineChartLeaf.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include <QPainter>

#include "ui/qt/charts/LinePainter.h"
#include "ui/qt/theme/Theme.h"

namespace kestrune::ui::qt {
namespace {

// The centre of a line of that thickness at `value`; the whole line is within the bounds. NaN is at the
// bottom.
double lineY(double value, double height, double thickness) {
  const double known = std::isnan(value) ? 0 : value;
  return thickness / 2 + (height - thickness) * (1 - known);
}

std::vector<LinePoint> pointsOf(const std::vector<double>& heights, double width, double height,
                                double thickness) {
  std::vector<LinePoint> points;
  points.reserve(heights.size());
  const double step = heights.size() > 1 ? width / static_cast<double>(heights.size() - 1) : 0;
  for (const double value : heights) {
    const double x = step * static_cast<double>(points.size());
    points.push_back({static_cast<float>(x), static_cast<float>(lineY(value, height, thickness))});
  }
  return points;
}

}  // namespace

LineChartLeaf::LineChartLeaf(Theme& theme, QWidget* parent) : ChartLeaf(theme, parent) {}

bool LineChartLeaf::show(const Content& content, const LeafStyle& style) {
  adopt(style);
  const auto& next = std::get<LineChartContent>(content);
  const bool looksTheSame = next == content_;
  content_ = next;
  setReadOut(content_.readOut);
  if (looksTheSame) return false;
  update();
  refreshReadOut();
  return false;
}

std::size_t LineChartLeaf::pointCount() const {
  std::size_t count = 0;
  for (const auto& line : content_.lines) count = std::max(count, line.heights.size());
  return count;
}

std::optional<std::size_t> LineChartLeaf::pointedAt() const {
  const std::size_t count = pointCount();
  if (!pointer() || count < 2 || width() <= 0) return std::nullopt;
  const double place = static_cast<double>(std::clamp(pointer()->x(), 0, width())) / width();
  return static_cast<std::size_t>(std::lround(place * static_cast<double>(count - 1)));
}

void LineChartLeaf::paint(QPainter& painter) {
  const double scale = devicePixelRatioF();
  const double width = this->width() * scale;
  const double height = this->height() * scale;
  // At a fractional ratio the last pixels are shared with the neighbouring widgets.
  QImage image(static_cast<int>(std::ceil(width)), static_cast<int>(std::ceil(height)),
               QImage::Format_ARGB32_Premultiplied);
  if (image.isNull()) return;
  image.fill(0);
  for (const auto& line : content_.lines) {
    const double thickness = content_.lineWidth * scale;
    paintAscendingLine(image, pointsOf(line.heights, width, height, thickness), static_cast<float>(thickness),
                       qPremultiply(color(line.color).rgba()));
  }
  image.setDevicePixelRatio(scale);
  painter.drawImage(QPointF(0, 0), image);
  if (const auto point = pointedAt()) paintMark(painter, *point);
}

void LineChartLeaf::paintMark(QPainter& painter, std::size_t point) const {
  constexpr double hairlineOpacity = 0.35;
  constexpr double dotRadius = 2.5;
  const double x = this->width() * static_cast<double>(point) / static_cast<double>(pointCount() - 1);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(color(Color(ColorRole::primary, hairlineOpacity)), 1));
  painter.drawLine(QPointF(x, 0), QPointF(x, height()));
  painter.setPen(Qt::NoPen);
  for (const auto& line : content_.lines) {
    if (line.heights.size() != pointCount()) continue;
    const double y = lineY(line.heights[point], height(), content_.lineWidth);
    painter.setBrush(color(line.color));
    painter.drawEllipse(QPointF(x, y), dotRadius, dotRadius);
  }
}

}  // namespace kestrune::ui::qt
