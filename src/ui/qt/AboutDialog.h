#pragma once

class QWidget;

namespace kestrune::ui::qt {

class Theme;

// Shows what the program is: its icon, name, version and what it does. One such window at a time; asking
// again brings it forward.
void showAbout(const Theme& theme, QWidget* parent);

}  // namespace kestrune::ui::qt
