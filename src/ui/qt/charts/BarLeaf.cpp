#include "ui/qt/charts/BarLeaf.h"

#include <algorithm>
#include <cmath>

#include <QPainter>

namespace kestrune::ui::qt {
namespace {

void fillRounded(QPainter& painter, const QRectF& rect, double radius, const QColor& color) {
  const double fitting = std::min({radius, rect.width() / 2, rect.height() / 2});
  painter.setBrush(color);
  painter.drawRoundedRect(rect, fitting, fitting);
}

}  // namespace

bool BarLeaf::show(const Content& content, const LeafStyle& style) {
  adopt(style);
  const auto& next = std::get<BarContent>(content);
  const bool hasNewLook = next.track != content_.track || next.fill != content_.fill ||
                          next.cornerRadius != content_.cornerRadius;
  content_ = next;
  setFraction(next.fraction, next.animationSeconds, hasNewLook);
  return false;
}

int BarLeaf::endOf(double fraction) const {
  return static_cast<int>(std::lround(fraction * width() * devicePixelRatioF()));
}

void BarLeaf::paintGauge(QPainter& painter) {
  painter.setPen(Qt::NoPen);
  fillRounded(painter, rect(), content_.cornerRadius, color(content_.track));
  const double filled = end() / devicePixelRatioF();
  if (filled > 0)
    fillRounded(painter, QRectF(0, 0, filled, height()), content_.cornerRadius, color(content_.fill));
}

}  // namespace kestrune::ui::qt
