#pragma once

#include "ui/MainTab.h"
#include "ui/view/View.h"

namespace kestrune::ui {

// Stands for a page that the program doesn't have yet.
struct PlaceholderTab {
  MainTab tab = MainTab::overview;

  View body() const;
  operator View() const { return body(); }
};

}  // namespace kestrune::ui
