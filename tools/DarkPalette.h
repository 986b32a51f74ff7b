#pragma once

#include <QPalette>

namespace kestrune::tools {

// A dark desktop's palette, for where no desktop is there to ask.
QPalette darkPalette();

}  // namespace kestrune::tools
