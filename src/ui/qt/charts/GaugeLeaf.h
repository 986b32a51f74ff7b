#pragma once

#include "ui/qt/leaves/PaintedLeaf.h"
#include "ui/qt/theme/Animation.h"

namespace kestrune::ui::qt {

// A leaf that shows a fraction and eases over to another one. It is painted again only where the difference
// can be seen.
class GaugeLeaf : public FillingLeaf {
 public:
  GaugeLeaf(Theme& theme, QWidget* parent);

 protected:
  // Takes a fraction, cut to 0 to 1, and moves there in that time; at once the first time, and where no
  // movement is to be seen. `hasNewLook`: something else is to be shown differently too.
  void setFraction(double fraction, double seconds, bool hasNewLook);
  // Where the part that is shown now ends.
  int end() const { return endOf(fraction_.value()); }

  // Where a part of that size ends, in the smallest steps that can be told apart.
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

}  // namespace kestrune::ui::qt
