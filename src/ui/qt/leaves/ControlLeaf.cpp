#include "ui/qt/leaves/ControlLeaf.h"

#include <utility>

#include <QFocusEvent>
#include <QPainter>

#include "ui/qt/leaves/FocusReason.h"

namespace kestrune::ui::qt {

ControlLeaf::ControlLeaf(Theme& theme, QWidget* parent, QAccessible::Role role)
    : PaintedLeaf(theme, parent, role) {
  setFocusPolicy(Qt::StrongFocus);
}

void ControlLeaf::paintFocus(QPainter& painter, const QRectF& bounds, double radius) const {
  if (!showsFocus_) return;
  painter.setPen(QPen(color(Color(ColorRole::accent, 0.9)), 2));
  painter.setBrush(Qt::NoBrush);
  painter.drawRoundedRect(bounds.adjusted(1, 1, -1, -1), radius, radius);
}

void ControlLeaf::paintKnob(QPainter& painter, const QRectF& knob, double rimOpacity) const {
  painter.setPen(Qt::NoPen);
  painter.setBrush(color(Color(ColorRole::black, rimOpacity)));
  painter.drawEllipse(knob.adjusted(-0.25, 0.25, 0.25, 0.75));
  painter.setBrush(color(Color::rgb(1, 1, 1)));
  painter.drawEllipse(knob);
}

void ControlLeaf::showFocus() {
  if (!std::exchange(showsFocus_, true)) update();
}

bool ControlLeaf::event(QEvent* event) {
  if (event->type() == QEvent::EnabledChange) update();
  return PaintedLeaf::event(event);
}

void ControlLeaf::focusInEvent(QFocusEvent* event) {
  showsFocus_ = isKeyboardReason(event->reason());
  update();
}

void ControlLeaf::focusOutEvent(QFocusEvent*) {
  showsFocus_ = false;
  update();
}

}  // namespace kestrune::ui::qt
