#pragma once

#include "ui/qt/leaves/Leaf.h"

namespace kestrune::ui::qt {

// What pickers, switches and sliders have in common: they handle the left mouse button, take the focus, and
// show it if it came by keyboard.
class ControlLeaf : public Leaf {
 protected:
  ControlLeaf(Theme& theme, QWidget* parent, QAccessible::Role role);

  // The left button went down or up at `place`; the release may be outside the control.
  virtual void press(QPointF) {}
  virtual void release(QPointF) {}

  // Draws the focus ring, if the focus is to be shown.
  void paintFocus(QPainter& painter, double radius) const;
  // Shows the focus from now on: the control was used by keyboard.
  void showFocus();
  // Draws the round piece that the user moves, with a rim of that opacity below it.
  void paintKnob(QPainter& painter, const QRectF& knob, double rimOpacity) const;

  bool event(QEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void mousePressEvent(QMouseEvent* event) final;
  void mouseReleaseEvent(QMouseEvent* event) final;

 private:
  bool showsFocus_ = false;
};

}  // namespace kestrune::ui::qt
