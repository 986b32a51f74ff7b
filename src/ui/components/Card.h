#pragma once

#include "ui/view/View.h"

namespace kestrune::ui {

// A raised surface behind its content.
struct Card {
  View content;

  View body() const;
  operator View() const { return body(); }
};

}  // namespace kestrune::ui
