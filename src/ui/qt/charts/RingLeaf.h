#pragma once

#include "ui/qt/charts/GaugeLeaf.h"

namespace kestrune::ui::qt {

// A ring and its arc, clockwise from twelve o'clock. The whole thickness of the ring is within the square.
class RingLeaf final : public GaugeLeaf {
 public:
  using GaugeLeaf::GaugeLeaf;

  bool show(const Content& content, const LeafStyle& style) override;

 protected:
  int endOf(double fraction) const override;
  void paintGauge(QPainter& painter) override;

 private:
  RingContent content_;
};

}  // namespace kestrune::ui::qt
