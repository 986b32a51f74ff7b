#pragma once

#include "ui/qt/leaves/PaintedLeaf.h"

namespace kestrune::ui::qt {

// What switches and sliders have in common: they take the focus, and show it where it came by keyboard.
class ControlLeaf : public PaintedLeaf {
 protected:
  ControlLeaf(Theme& theme, QWidget* parent, QAccessible::Role role);

  // Around the control, if it is to be shown.
  void paintFocus(QPainter& painter, const QRectF& bounds, double radius) const;
  void showFocus();
  // The round piece that the user moves, with a rim of that strength below it.
  void paintKnob(QPainter& painter, const QRectF& knob, double rimOpacity) const;

  bool event(QEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  bool showsFocus_ = false;
};

}  // namespace kestrune::ui::qt
