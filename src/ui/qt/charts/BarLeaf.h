#pragma once

#include "ui/qt/charts/GaugeLeaf.h"

namespace kestrune::ui::qt {

// A track and its filled part, which ends on a whole device pixel.
class BarLeaf final : public GaugeLeaf {
 public:
  using GaugeLeaf::GaugeLeaf;

  bool show(const Content& content, const LeafStyle& style) override;

 protected:
  int endOf(double fraction) const override;
  void paintGauge(QPainter& painter) override;

 private:
  BarContent content_;
};

}  // namespace kestrune::ui::qt
