#include "ui/qt/charts/RingLeaf.h"

#include <algorithm>
#include <cmath>

#include <QPainter>

namespace kestrune::ui::qt {
namespace {

// QPainter's unit for angles.
constexpr int unitsPerTurn = 360 * 16;
constexpr int twelveOClock = unitsPerTurn / 4;
// Half a degree each: one pixel on a ring with a radius of 114 pixels.
constexpr int stepsPerTurn = 720;
constexpr int unitsPerStep = unitsPerTurn / stepsPerTurn;

}  // namespace

bool RingLeaf::show(const Content& content, const LeafStyle& style) {
  adopt(style);
  const auto& next = std::get<RingContent>(content);
  const bool hasNewLook =
      next.track != content_.track || next.arc != content_.arc || next.lineWidth != content_.lineWidth;
  content_ = next;
  setFraction(next.fraction, next.animationSeconds, hasNewLook);
  return false;
}

int RingLeaf::endOf(double fraction) const {
  if (fraction <= 0) return 0;
  return std::clamp(static_cast<int>(std::lround(fraction * stepsPerTurn)), 1, stepsPerTurn);
}

void RingLeaf::paintGauge(QPainter& painter) {
  const double side = std::min(width(), height()) - content_.lineWidth;
  if (side <= 0) return;
  const QRectF circle((width() - side) / 2, (height() - side) / 2, side, side);
  painter.setPen(QPen(color(content_.track), content_.lineWidth));
  painter.drawEllipse(circle);
  const int length = end();
  if (length == 0) return;
  painter.setPen(QPen(color(content_.arc), content_.lineWidth, Qt::SolidLine, Qt::RoundCap));
  if (length == stepsPerTurn) {
    painter.drawEllipse(circle);
  } else {
    painter.drawArc(circle, twelveOClock, -length * unitsPerStep);
  }
}

}  // namespace kestrune::ui::qt
