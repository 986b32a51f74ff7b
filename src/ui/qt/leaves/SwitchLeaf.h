#pragma once

#include "ui/qt/leaves/ControlLeaf.h"
#include "ui/qt/theme/Animation.h"

namespace kestrune::ui::qt {

// On or off. A click, the space bar or the return key toggles it. Only the user's changes are reported.
class SwitchLeaf final : public ControlLeaf {
 public:
  SwitchLeaf(Theme& theme, QWidget* parent);

  bool show(const Content& content, const LeafStyle& style) override;
  LeafMetrics measure(Proposal proposal) override;

  bool isOn() const { return content_.isOn; }
  void toggle();

 protected:
  void paint(QPainter& painter) override;
  void release(QPointF place) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void follow(bool isOn);

  SwitchContent content_;
  // 0 is off, 1 is on.
  EasedValue knob_;
  bool isShown_ = false;
};

}  // namespace kestrune::ui::qt
