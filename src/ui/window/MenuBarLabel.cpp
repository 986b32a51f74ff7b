#include "ui/window/MenuBarLabel.h"

namespace kestrune::ui {

std::string MenuBarLabel::load(LocaleFormats& formats) const {
  return formats.percent(cpu.menuBarUsagePercent.get() / 100, 0);
}

}  // namespace kestrune::ui
