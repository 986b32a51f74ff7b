#pragma once

#include "ui/qt/leaves/ControlLeaf.h"
#include "ui/qt/theme/Animation.h"

namespace kestrune::ui::qt {

// On or off. A click, the space bar or the return key turns it over; the user's changes alone are reported.
class SwitchLeaf final : public ControlLeaf {
 public:
  SwitchLeaf(Theme& theme, QWidget* parent);

  bool show(const Content& content, const LeafStyle& style) override;
  LeafMetrics measure(Proposal proposal) override;

  bool isOn() const { return content_.isOn; }
  void turnOver();

 protected:
  void paint(QPainter& painter) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void follow(bool isOn);

  SwitchContent content_;
  EasedValue knob_;  // 0 off, 1 on
  bool isShown_ = false;
};

}  // namespace kestrune::ui::qt
