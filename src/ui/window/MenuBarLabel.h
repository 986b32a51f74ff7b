#pragma once

#include <string>

#include "providers/CPUProvider.h"
#include "texts/LocaleFormats.h"

namespace kestrune::ui {

// The CPU load as the tray item shows it; changes at every third tick.
struct MenuBarLabel {
  const CPUProvider& cpu;

  // "34%", as the locale writes it.
  std::string load(LocaleFormats& formats) const {
    return formats.percent(cpu.menuBarUsagePercent.get() / 100, 0);
  }
};

}  // namespace kestrune::ui
