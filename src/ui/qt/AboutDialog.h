#pragma once

class QWidget;

namespace kestrune::ui::qt {

class Theme;

// Shows the program's icon, name, version and purpose. There is one such window at a time; another call
// raises it.
void showAbout(const Theme& theme, QWidget* parent);

}  // namespace kestrune::ui::qt
