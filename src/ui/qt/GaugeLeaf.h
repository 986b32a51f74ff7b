#pragma once

#include "ui/qt/Animation.h"
#include "ui/qt/PaintedLeaf.h"

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
  double fraction() const { return fraction_.value(); }

  // Where the shown part ends, in steps that can be told apart.
  virtual int end() const = 0;
  virtual void paintGauge(QPainter& painter) = 0;

 private:
  void paint(QPainter& painter) final;
  void followFraction();

  EasedValue fraction_;
  bool isShown_ = false;
  int paintedEnd_ = 0;
};

}  // namespace kestrune::ui::qt
