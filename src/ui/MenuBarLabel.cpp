#include "ui/MenuBarLabel.h"

#include "ui/ViewList.h"

namespace kestrune::ui {

View MenuBarLabel::body(LocaleFormats& formats) const {
  auto load = verbatim(formats.percent(cpu.menuBarUsagePercent.get() / 100, 0));
  return hstack(4, VerticalAlignment::center,
                views(image("MenuBarIconTemplate").size(16, 16),
                      std::move(load).withMonospacedDigits(11, FontWeight::medium)));
}

}  // namespace kestrune::ui
