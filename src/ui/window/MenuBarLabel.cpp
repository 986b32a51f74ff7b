#include "ui/window/MenuBarLabel.h"

#include "ui/view/ViewList.h"

namespace kestrune::ui {

std::string MenuBarLabel::load(LocaleFormats& formats) const {
  return formats.percent(cpu.menuBarUsagePercent.get() / 100, 0);
}

View MenuBarLabel::body(LocaleFormats& formats) const {
  return hstack(4, VerticalAlignment::center,
                views(image("MenuBarIconTemplate").size(16, 16),
                      verbatim(load(formats)).withMonospacedDigits(11, FontWeight::medium)));
}

}  // namespace kestrune::ui
