#pragma once

#include <QPalette>

#include "platform/desktop/DesktopAppearance.h"

namespace kestrune::ui::qt {

// Dark colours, for where the desktop's theme has none.
QPalette darkPalette();

// The palette of the desktop's theme, made to follow what the user wants of all programs: dark or light where
// it is not, and with the accent colour.
QPalette desktopPalette(const QPalette& theme, const desktop::Appearance& appearance);

}  // namespace kestrune::ui::qt
