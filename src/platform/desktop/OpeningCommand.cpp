#include "platform/desktop/OpeningCommand.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>
#include <ranges>

namespace kestrune::desktop {
namespace {

enum class Panel : std::uint8_t { notifications, location, fileAccess };

constexpr std::string_view settingsScheme = "x-apple.systempreferences:";

struct PanelAddress {
  std::string_view address;  // after the scheme
  Panel panel;
};
constexpr std::array panelAddresses{
    PanelAddress{"com.apple.preference.notifications", Panel::notifications},
    PanelAddress{"com.apple.preference.security?Privacy_LocationServices", Panel::location},
    PanelAddress{"com.apple.preference.security?Privacy_AllFiles", Panel::fileAccess},
};

struct PanelProgram {
  std::string_view desktop;
  Panel panel;
  std::string_view program;
  std::string_view argument;  // none where empty
};
// What a program may reach outside its sandbox is set where its other permissions are.
constexpr std::array panelPrograms{
    PanelProgram{"GNOME", Panel::notifications, "gnome-control-center", "notifications"},
    PanelProgram{"GNOME", Panel::location, "gnome-control-center", "location"},
    PanelProgram{"GNOME", Panel::fileAccess, "gnome-control-center", "applications"},
    PanelProgram{"KDE", Panel::notifications, "systemsettings", "kcm_notifications"},
    PanelProgram{"KDE", Panel::notifications, "systemsettings5", "kcm_notifications"},
    PanelProgram{"KDE", Panel::notifications, "kcmshell6", "kcm_notifications"},
    PanelProgram{"KDE", Panel::notifications, "kcmshell5", "kcm_notifications"},
    PanelProgram{"KDE", Panel::fileAccess, "systemsettings", "kcm_flatpak"},
    PanelProgram{"KDE", Panel::fileAccess, "systemsettings5", "kcm_flatpak"},
    PanelProgram{"XFCE", Panel::notifications, "xfce4-notifyd-config", ""},
    PanelProgram{"MATE", Panel::notifications, "mate-notification-properties", ""},
    PanelProgram{"LXQt", Panel::notifications, "lxqt-config-notificationd", ""},
    PanelProgram{"X-Cinnamon", Panel::notifications, "cinnamon-settings", "notifications"},
};

std::optional<Panel> panelAt(std::string_view address) {
  const auto* const found = std::ranges::find(panelAddresses, address, &PanelAddress::address);
  return found == panelAddresses.end() ? std::nullopt : std::optional(found->panel);
}

std::vector<CommandLine> panelCommands(std::string_view desktops, Panel panel) {
  std::vector<CommandLine> commands;
  for (const auto name : std::views::split(desktops, ':')) {
    const std::string_view desktop(name.begin(), name.end());
    for (const auto& entry : panelPrograms) {
      if (entry.desktop != desktop || entry.panel != panel) continue;
      CommandLine& command = commands.emplace_back();
      command.emplace_back(entry.program);
      if (!entry.argument.empty()) command.emplace_back(entry.argument);
    }
  }
  return commands;
}

// Whether it begins as an address does, so that no program takes it for an option or for a file's name.
bool hasScheme(std::string_view url) {
  const auto isLetter = [](char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); };
  const auto isInside = [&](char c) {
    return isLetter(c) || (c >= '0' && c <= '9') || c == '+' || c == '-' || c == '.';
  };
  const auto colon = url.find(':');
  if (colon == std::string_view::npos || colon == 0) return false;
  return isLetter(url.front()) && std::ranges::all_of(url.substr(0, colon), isInside);
}

}  // namespace

std::vector<CommandLine> openingCommands(std::string_view desktops, std::string_view url) {
  if (!hasScheme(url)) return {};
  if (url.starts_with(settingsScheme)) {
    const auto panel = panelAt(url.substr(settingsScheme.size()));
    return panel ? panelCommands(desktops, *panel) : std::vector<CommandLine>();
  }
  const std::string address(url);
  return {{"xdg-open", address}, {"gio", "open", address}};
}

}  // namespace kestrune::desktop
