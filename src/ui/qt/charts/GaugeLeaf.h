#pragma once

#include "ui/qt/leaves/Leaf.h"
#include "ui/qt/theme/Animation.h"

namespace kestrune::ui::qt {

// A leaf that shows a fraction and eases to the next one. It repaints only when the difference is visible.
class GaugeLeaf : public Leaf {
 public:
  GaugeLeaf(Theme& theme, QWidget* parent);

 protected:
  // Clamps the fraction to [0, 1] and eases to it within `seconds`; at once the first time, or if the
  // movement wouldn't be seen. `hasNewLook`: something else about the gauge has changed too.
  void setFraction(double fraction, double seconds, bool hasNewLook);
  // Where the part shown now ends.
  int end() const { return endOf(fraction_.value()); }

  // Where a part of that size ends, in the smallest distinguishable steps.
  virtual int endOf(double fraction) const = 0;
  virtual void paintGauge(QPainter& painter) = 0;

 private:
  void paint(QPainter& painter) final;
  void followFraction();
  bool wouldMove(double target) const;

  EasedValue fraction_;
  bool isShown_ = false;
  int paintedEnd_ = 0;
};

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
