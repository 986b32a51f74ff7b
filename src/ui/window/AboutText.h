#pragma once

#include <string_view>

namespace kestrune::ui {

// The text of the About panel below name and version. A key; the catalogue has the words for this desktop.
inline constexpr std::string_view aboutText =
    "Real-time system monitor for macOS.\n\n"
    "Track CPU, memory, disk, network, battery, and audio — all in one place.";

}  // namespace kestrune::ui
