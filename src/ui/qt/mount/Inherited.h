#pragma once

#include <optional>

#include "ui/view/View.h"

namespace kestrune::ui::qt {

// What a view takes over from the views around it.
struct Inherited {
  Font font;
  Color foreground = ColorRole::primary;
  double opacity = 1;
  std::optional<Color> backdrop;  // the even colour behind
  bool isAccessibilityHidden = false;
  bool isEnabled = true;
  bool isInRows = false;  // views in rows take no focus of their own
  int depth = 0;

  friend bool operator==(const Inherited&, const Inherited&) = default;
};

// What a view that inherits `around` passes on to its own widget and to its children. `pulse` is the opacity
// that its breathing has reached.
Inherited passedOn(const View& view, const Inherited& around, double pulse);

}  // namespace kestrune::ui::qt
