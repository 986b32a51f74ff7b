#pragma once

#include "ui/qt/PaintedLeaf.h"

namespace kestrune::ui::qt {

// Lines over a common width. What of a line's thickness reaches past the bounds is cut off.
class LineChartLeaf final : public FillingLeaf {
 public:
  LineChartLeaf(Theme& theme, QWidget* parent);

  bool show(const Content& content, const LeafStyle& style) override;

 protected:
  void paint(QPainter& painter) override;

 private:
  LineChartContent content_;
};

}  // namespace kestrune::ui::qt
