#pragma once

#include "ui/view/View.h"

namespace kestrune::ui {

// A bar of height 5, filled from the leading edge. The caller sets the width.
struct ThinBar {
  double fraction = 0;  // of the width; out of 0 and 1 it is clamped
  Color color;

  View body() const;
  operator View() const { return body(); }
};

// A ring, filled clockwise from twelve o'clock. Fills its parent's square.
struct DonutRing {
  double fraction = 0;  // of the ring; out of 0 and 1 it is clamped
  double lineWidth = 1;
  Color color;

  View body() const;
  operator View() const { return body(); }
};

}  // namespace kestrune::ui
