#pragma once

#include <string>

#include "providers/CPUProvider.h"
#include "texts/LocaleFormats.h"
#include "ui/view/View.h"

namespace kestrune::ui {

// What stands in the menu bar: the icon and the CPU load, which moves at every third tick. A tray that takes
// no more than a picture shows the load alone.
struct MenuBarLabel {
  const CPUProvider& cpu;

  // "34%", as the locale writes it.
  std::string load(LocaleFormats& formats) const;
  View body(LocaleFormats& formats) const;
};

}  // namespace kestrune::ui
