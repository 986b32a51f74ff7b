#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace kestrune::ui {

// The pages of the main window, in the order of the sidebar.
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

inline constexpr std::array allMainTabs{
    MainTab::overview, MainTab::cpu,   MainTab::memory,  MainTab::disk,  MainTab::network,
    MainTab::power,    MainTab::audio, MainTab::folders, MainTab::stats, MainTab::settings};

// Localizable.
std::string_view title(MainTab tab);
std::string_view symbolName(MainTab tab);

// In-process notifications to the main window. The object of the first is the MainTab to show; the second has
// none and shows the settings.
inline constexpr std::string_view switchTabNotification = "Kestrune.switchTab";
inline constexpr std::string_view openSettingsTabNotification = "Kestrune.openSettingsTab";

}  // namespace kestrune::ui
