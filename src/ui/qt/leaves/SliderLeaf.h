#pragma once

#include "ui/qt/leaves/ControlLeaf.h"

namespace kestrune::ui::qt {

// A number between two limits, dragged or moved with the arrow keys, Home and End. Only the user's changes
// are reported. A value between two steps is shown as it is until the user moves it.
class SliderLeaf final : public ControlLeaf {
 public:
  SliderLeaf(Theme& theme, QWidget* parent);

  bool show(const Content& content, const LeafStyle& style) override;
  LeafMetrics measure(Proposal proposal) override;

  const SliderContent& content() const { return content_; }
  // The value of the last step within the limits.
  double lastStep() const;
  // Moves to the step nearest to `value`.
  void choose(double value);

 protected:
  void paint(QPainter& painter) override;
  void press(QPointF place) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  double knobPlace() const;
  void chooseAt(double x);

  SliderContent content_;
};

}  // namespace kestrune::ui::qt
