#include "ui/qt/ControlLeaf.h"

#include <utility>

#include <QFocusEvent>
#include <QPainter>

#include "ui/qt/FocusReason.h"

namespace kestrune::ui::qt {

ControlLeaf::ControlLeaf(Theme& theme, QWidget* parent, QAccessible::Role role)
    : PaintedLeaf(theme, parent, role) {
  setFocusPolicy(Qt::StrongFocus);
  setAttribute(Qt::WA_Hover);
}

void ControlLeaf::paintFocus(QPainter& painter, const QRectF& bounds, double radius) const {
  if (!showsFocus_) return;
  painter.setPen(QPen(color(Color(ColorRole::accent, 0.9)), 2));
  painter.setBrush(Qt::NoBrush);
  painter.drawRoundedRect(bounds.adjusted(1, 1, -1, -1), radius, radius);
}

void ControlLeaf::showFocus() {
  if (!std::exchange(showsFocus_, true)) update();
}

bool ControlLeaf::event(QEvent* event) {
  const auto type = event->type();
  if (type == QEvent::HoverEnter || type == QEvent::HoverLeave) isHovered_ = type == QEvent::HoverEnter;
  if (type == QEvent::EnabledChange) update();
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
