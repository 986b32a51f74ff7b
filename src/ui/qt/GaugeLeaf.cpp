#include "ui/qt/GaugeLeaf.h"

#include <algorithm>
#include <cmath>

#include <QPainter>

#include "ui/qt/Theme.h"

namespace kestrune::ui::qt {

GaugeLeaf::GaugeLeaf(Theme& theme, QWidget* parent)
    : FillingLeaf(theme, parent, QAccessible::Graphic),
      fraction_(theme.animations(), [this] { followFraction(); }) {}

void GaugeLeaf::setFraction(double fraction, double seconds, bool hasNewLook) {
  const double target = std::isnan(fraction) ? 0 : std::clamp(fraction, 0.0, 1.0);
  if (target != fraction_.target()) fraction_.set(target, isShown_ && canAnimate(*this) ? seconds : 0);
  isShown_ = true;
  if (hasNewLook) {
    update();
  } else {
    followFraction();
  }
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
