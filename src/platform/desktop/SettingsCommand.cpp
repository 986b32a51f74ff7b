#include "platform/desktop/SettingsCommand.h"

#include <array>
#include <ranges>

namespace kestrune::desktop {
namespace {

using platform::SettingsPanel;

struct PanelProgram {
  std::string_view desktop;
  SettingsPanel panel;
  std::string_view program;
  std::string_view argument;  // empty: none
};
// File access is set among the permissions of sandboxed programs.
constexpr std::array panelPrograms{
    PanelProgram{"GNOME", SettingsPanel::notifications, "gnome-control-center", "notifications"},
    PanelProgram{"GNOME", SettingsPanel::location, "gnome-control-center", "location"},
    PanelProgram{"GNOME", SettingsPanel::fileAccess, "gnome-control-center", "applications"},
    PanelProgram{"KDE", SettingsPanel::notifications, "systemsettings", "kcm_notifications"},
    PanelProgram{"KDE", SettingsPanel::notifications, "systemsettings5", "kcm_notifications"},
    PanelProgram{"KDE", SettingsPanel::notifications, "kcmshell6", "kcm_notifications"},
    PanelProgram{"KDE", SettingsPanel::notifications, "kcmshell5", "kcm_notifications"},
    PanelProgram{"KDE", SettingsPanel::fileAccess, "systemsettings", "kcm_flatpak"},
    PanelProgram{"KDE", SettingsPanel::fileAccess, "systemsettings5", "kcm_flatpak"},
    PanelProgram{"XFCE", SettingsPanel::notifications, "xfce4-notifyd-config", ""},
    PanelProgram{"MATE", SettingsPanel::notifications, "mate-notification-properties", ""},
    PanelProgram{"LXQt", SettingsPanel::notifications, "lxqt-config-notificationd", ""},
    PanelProgram{"X-Cinnamon", SettingsPanel::notifications, "cinnamon-settings", "notifications"},
};

}  // namespace

std::vector<CommandLine> settingsCommands(std::string_view desktops, SettingsPanel panel) {
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

}  // namespace kestrune::desktop
