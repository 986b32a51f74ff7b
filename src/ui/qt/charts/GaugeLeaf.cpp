#include "ui/qt/charts/GaugeLeaf.h"

#include <algorithm>
#include <cmath>

#include <QPainter>

#include "ui/qt/theme/Theme.h"

namespace kestrune::ui::qt {
namespace {

void fillRounded(QPainter& painter, const QRectF& rect, double radius, const QColor& color) {
  const double fitting = std::min({radius, rect.width() / 2, rect.height() / 2});
  painter.setBrush(color);
  painter.drawRoundedRect(rect, fitting, fitting);
}

// QPainter's unit for angles.
constexpr int unitsPerTurn = 360 * 16;
constexpr int twelveOClock = unitsPerTurn / 4;
// Half a degree each: one pixel on a ring with a radius of 114 pixels.
constexpr int stepsPerTurn = 720;
constexpr int unitsPerStep = unitsPerTurn / stepsPerTurn;

}  // namespace

GaugeLeaf::GaugeLeaf(Theme& theme, QWidget* parent)
    : Leaf(theme, parent, QAccessible::Graphic),
      fraction_(theme.animations(), [this] { followFraction(); }) {}

void GaugeLeaf::setFraction(double fraction, double seconds, bool hasNewLook) {
  const double target = std::isnan(fraction) ? 0 : std::clamp(fraction, 0.0, 1.0);
  if (target != fraction_.target()) fraction_.set(target, wouldMove(target) ? seconds : 0);
  isShown_ = true;
  if (hasNewLook) {
    update();
  } else {
    followFraction();
  }
}

// A move by a single step has no frames in between and isn't worth animating.
bool GaugeLeaf::wouldMove(double target) const {
  return isShown_ && std::abs(endOf(target) - end()) > 1 && canAnimate(*this);
}

void GaugeLeaf::followFraction() {
  if (end() != paintedEnd_) update();
}

void GaugeLeaf::paint(QPainter& painter) {
  paintedEnd_ = end();
  painter.setRenderHint(QPainter::Antialiasing);
  paintGauge(painter);
}

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
