#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace kestrune::ui {

struct View;
struct ViewContext;

// The tabs of the main window.
enum class MainTab : std::uint8_t {
  overview,
  cpu,
  memory,
  disk,
  network,
  power,
  audio,
  folders,
  stats,
  settings
};

// How a tab appears in the sidebar, in the menu "Go" and as the detail of the window.
struct MainTabEntry {
  MainTab tab = MainTab::overview;
  std::string_view title;   // localizable
  std::string_view symbol;  // name in the symbol table
  char key = '0';           // with the command modifier, the shortcut in the menu
  View (*page)(const ViewContext&) = nullptr;
  bool separatorBefore = false;  // in the menu
};

// By raw value, which is the order of the sidebar and of the menu.
extern const std::array<MainTabEntry, 10> mainTabs;

const MainTabEntry& entry(MainTab tab);

// In-process notifications to the main window. The object of the first is the MainTab to show; the second has
// no object and shows the settings.
inline constexpr std::string_view switchTabNotification = "Kestrune.switchTab";
inline constexpr std::string_view openSettingsTabNotification = "Kestrune.openSettingsTab";

}  // namespace kestrune::ui
