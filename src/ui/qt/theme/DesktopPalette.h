#pragma once

#include <QPalette>

#include "platform/desktop/DesktopAppearance.h"

namespace kestrune::ui::qt {

// Dark colours, for desktop themes that have none.
QPalette darkPalette();

// The palette of the desktop's theme, adjusted to the user's preferences: dark or light as wanted, with the
// accent colour.
QPalette desktopPalette(const QPalette& theme, const desktop::Appearance& appearance);

}  // namespace kestrune::ui::qt
