#include "ui/qt/charts/GaugeLeaf.h"

#include <algorithm>
#include <cmath>

#include <QPainter>

#include "ui/qt/theme/Theme.h"

namespace kestrune::ui::qt {

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

}  // namespace kestrune::ui::qt
