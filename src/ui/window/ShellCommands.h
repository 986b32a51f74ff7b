#pragma once

#include <array>
#include <string_view>

#include "ui/window/MainTab.h"

namespace kestrune::ui {

// One entry of the menu "Go". It posts `switchTabNotification` with its tab, listed in the sidebar or not.
struct GoMenuEntry {
  std::string_view title;  // localizable
  char key = '0';          // the digit that, with the command modifier, stands for the entry
  MainTab tab = MainTab::overview;
  bool separatorBefore = false;
};

inline constexpr std::array<GoMenuEntry, 10> goMenu{{
    {"Overview", '1', MainTab::overview, false},
    {"CPU", '2', MainTab::cpu, false},
    {"Memory", '3', MainTab::memory, false},
    {"Disk", '4', MainTab::disk, false},
    {"Network", '5', MainTab::network, false},
    {"Power", '6', MainTab::power, false},
    {"Audio", '7', MainTab::audio, false},
    {"Folders", '8', MainTab::folders, false},
    {"Stats", '9', MainTab::stats, false},
    {"Settings", '0', MainTab::settings, true},
}};

// What the About panel says below name and version. A key; the catalogue has the words for this desktop.
inline constexpr std::string_view aboutText =
    "Real-time system monitor for macOS.\n\nTrack CPU, memory, disk, network, battery, and audio — all in "
    "one "
    "place.";

}  // namespace kestrune::ui
