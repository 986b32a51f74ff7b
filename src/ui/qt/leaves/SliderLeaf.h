#pragma once

#include "ui/qt/leaves/ControlLeaf.h"

namespace kestrune::ui::qt {

// A number to be dragged between two limits, or moved with the arrow keys, Home and End. The user's changes
// alone are reported. A value between the steps is shown where it is until the user moves it.
class SliderLeaf final : public ControlLeaf {
 public:
  SliderLeaf(Theme& theme, QWidget* parent);

  bool show(const Content& content, const LeafStyle& style) override;
  LeafMetrics measure(Proposal proposal) override;

  const SliderContent& content() const { return content_; }
  // The greatest step that can be reached.
  double lastStep() const;
  // Moves to the step nearest to the value.
  void choose(double value);

 protected:
  void paint(QPainter& painter) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  double knobPlace() const;
  void chooseAt(double x);

  SliderContent content_;
};

}  // namespace kestrune::ui::qt
