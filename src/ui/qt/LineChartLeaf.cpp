#include "ui/qt/LineChartLeaf.h"

#include <cmath>
#include <vector>

#include <QPainter>

#include "ui/qt/LinePainter.h"
#include "ui/qt/Theme.h"

namespace kestrune::ui::qt {
namespace {

// In device pixels; a height that is no number lies at the bottom.
std::vector<LinePoint> pointsOf(const std::vector<double>& heights, double width, double height) {
  std::vector<LinePoint> points;
  points.reserve(heights.size());
  const double step = heights.size() > 1 ? width / static_cast<double>(heights.size() - 1) : 0;
  for (const double value : heights) {
    const double known = std::isnan(value) ? 0 : value;
    const double x = step * static_cast<double>(points.size());
    points.push_back({static_cast<float>(x), static_cast<float>(height - height * known)});
  }
  return points;
}

}  // namespace

LineChartLeaf::LineChartLeaf(Theme& theme, QWidget* parent)
    : FillingLeaf(theme, parent, QAccessible::Graphic) {}

bool LineChartLeaf::show(const Content& content, const LeafStyle& style) {
  adopt(style);
  const auto& next = std::get<LineChartContent>(content);
  if (next == content_) return false;
  content_ = next;
  update();
  return false;
}

void LineChartLeaf::paint(QPainter& painter) {
  const double scale = devicePixelRatioF();
  const double width = this->width() * scale;
  const double height = this->height() * scale;
  // At a fractional ratio the last pixels are shared with what lies beside.
  QImage image(static_cast<int>(std::ceil(width)), static_cast<int>(std::ceil(height)),
               QImage::Format_ARGB32_Premultiplied);
  if (image.isNull()) return;
  image.fill(0);
  for (const auto& line : content_.lines) {
    paintAscendingLine(image, pointsOf(line.heights, width, height),
                       static_cast<float>(content_.lineWidth * scale),
                       qPremultiply(color(line.color).rgba()));
  }
  image.setDevicePixelRatio(scale);
  painter.drawImage(QPointF(0, 0), image);
}

}  // namespace kestrune::ui::qt
