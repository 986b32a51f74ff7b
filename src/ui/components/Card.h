#pragma once

#include "ui/view/View.h"

namespace kestrune::ui {

// The surface on which a dashboard puts what belongs together.
struct Card {
  View content;

  View body() const;
  operator View() const { return body(); }
};

}  // namespace kestrune::ui
