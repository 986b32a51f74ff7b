#include "ui/qt/leaves/ControlLeaf.h"

#include <utility>

#include <QFocusEvent>
#include <QPainter>

#include "ui/qt/leaves/FocusRing.h"

namespace kestrune::ui::qt {

ControlLeaf::ControlLeaf(Theme& theme, QWidget* parent, QAccessible::Role role) : Leaf(theme, parent, role) {
  setFocusPolicy(Qt::StrongFocus);
}

void ControlLeaf::paintFocus(QPainter& painter, double radius) const {
  if (showsFocus_) paintFocusRing(painter, theme(), rect(), radius, style().opacity);
}

void ControlLeaf::showFocus() {
  if (!std::exchange(showsFocus_, true)) update();
}

void ControlLeaf::paintKnob(QPainter& painter, const QRectF& knob, double rimOpacity) const {
  painter.setPen(Qt::NoPen);
  painter.setBrush(color(Color(ColorRole::black, rimOpacity)));
  painter.drawEllipse(knob.adjusted(-0.25, 0.25, 0.25, 0.75));
  painter.setBrush(color(Color::rgb(1, 1, 1)));
  painter.drawEllipse(knob);
}

bool ControlLeaf::event(QEvent* event) {
  if (event->type() == QEvent::EnabledChange) update();
  return Leaf::event(event);
}

void ControlLeaf::focusInEvent(QFocusEvent* event) {
  showsFocus_ = isKeyboardReason(event->reason());
  update();
}

void ControlLeaf::focusOutEvent(QFocusEvent*) {
  showsFocus_ = false;
  update();
}

void ControlLeaf::mousePressEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton) {
    press(event->position());
  } else {
    event->ignore();
  }
}

void ControlLeaf::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton) {
    release(event->position());
  } else {
    event->ignore();
  }
}

}  // namespace kestrune::ui::qt
