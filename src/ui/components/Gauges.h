#pragma once

#include "ui/view/View.h"

namespace kestrune::ui {

// A bar of height 5, filled from the leading edge. The caller sets the width.
struct ThinBar {
  double fraction = 0;  // of the width; clamped to [0, 1]
  Color color;

  View body() const;
  operator View() const { return body(); }
};

// A bar that shows a share of the largest entry of a list, without animation.
View shareBar(double fraction, Color fill, double height);

// A ring, filled clockwise from twelve o'clock. Fills its parent's square.
struct DonutRing {
  double fraction = 0;  // of the ring; clamped to [0, 1]
  double lineWidth = 1;
  Color color;

  View body() const;
  operator View() const { return body(); }
};

}  // namespace kestrune::ui
