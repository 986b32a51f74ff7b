#pragma once

#include "providers/CPUProvider.h"
#include "ui/LocaleFormats.h"
#include "ui/view/View.h"

namespace kestrune::ui {

// What stands in the menu bar: the icon and the CPU load, which moves at every third tick.
struct MenuBarLabel {
  const CPUProvider& cpu;

  View body(LocaleFormats& formats) const;
};

}  // namespace kestrune::ui
