#include "ui/qt/leaves/SliderLeaf.h"

#include <algorithm>
#include <cmath>

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

#include "ui/qt/theme/Theme.h"

namespace kestrune::ui::qt {
namespace {

constexpr double idealWidth = 160;
constexpr double controlHeight = 22;
constexpr double knobSide = 16;
constexpr double trackThickness = 4;

}  // namespace

SliderLeaf::SliderLeaf(Theme& theme, QWidget* parent) : ControlLeaf(theme, parent, QAccessible::Slider) {}

bool SliderLeaf::show(const Content& content, const LeafStyle& style) {
  adopt(style);
  const auto& next = std::get<SliderContent>(content);
  const bool hasMoved = next.value != content_.value || next.min != content_.min || next.max != content_.max;
  content_ = next;
  if (hasMoved) {
    update();
    QAccessibleValueChangeEvent event(this, content_.value);
    QAccessible::updateAccessibility(&event);
  }
  return false;
}

LeafMetrics SliderLeaf::measure(Proposal proposal) {
  const double width = std::max(proposal.width.value_or(idealWidth), 2 * knobSide);
  return {{width, controlHeight}, std::nullopt};
}

double SliderLeaf::lastStep() const {
  return content_.min + std::floor((content_.max - content_.min) / content_.step) * content_.step;
}

void SliderLeaf::choose(double value) {
  if (!isEnabled()) return;
  const double steps = std::round((value - content_.min) / content_.step);
  const double chosen = std::clamp(content_.min + steps * content_.step, content_.min, lastStep());
  if (chosen == content_.value) return;
  content_.value = chosen;
  update();
  const auto onChange = content_.onChange;  // the call may replace it
  if (onChange) onChange(chosen);
}

double SliderLeaf::knobPlace() const {
  const double range = content_.max - content_.min;
  const double share = range > 0 ? std::clamp((content_.value - content_.min) / range, 0.0, 1.0) : 0;
  return knobSide / 2 + share * (width() - knobSide);
}

void SliderLeaf::chooseAt(double x) {
  const double room = std::max(width() - knobSide, 1.0);
  const double share = std::clamp((x - knobSide / 2) / room, 0.0, 1.0);
  choose(content_.min + share * (content_.max - content_.min));
}

void SliderLeaf::press(QPointF place) {
  chooseAt(place.x());
}

void SliderLeaf::mouseMoveEvent(QMouseEvent* event) {
  if ((event->buttons() & Qt::LeftButton) != 0) chooseAt(event->position().x());
}

void SliderLeaf::keyPressEvent(QKeyEvent* event) {
  double target = content_.value;
  switch (event->key()) {
    case Qt::Key_Left:
    case Qt::Key_Down:
      target -= content_.step;
      break;
    case Qt::Key_Right:
    case Qt::Key_Up:
      target += content_.step;
      break;
    case Qt::Key_Home:
      target = content_.min;
      break;
    case Qt::Key_End:
      target = content_.max;
      break;
    default:
      event->ignore();
      return;
  }
  showFocus();
  choose(target);
}

void SliderLeaf::paint(QPainter& painter) {
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  const double middle = height() / 2.0;
  const QRectF track(0, middle - trackThickness / 2, width(), trackThickness);
  painter.setBrush(color(Color(ColorRole::primary, 0.12)));
  painter.drawRoundedRect(track, trackThickness / 2, trackThickness / 2);
  const double place = knobPlace();
  painter.setBrush(color(isEnabled() ? ColorRole::accent : ColorRole::tertiary));
  painter.drawRoundedRect(QRectF(0, track.top(), place, trackThickness), trackThickness / 2,
                          trackThickness / 2);
  const QRectF knob(place - knobSide / 2, middle - knobSide / 2, knobSide, knobSide);
  paintKnob(painter, knob, 0.22);
  paintFocus(painter, controlHeight / 2);
}

}  // namespace kestrune::ui::qt
