#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/Workspace.h"

namespace kestrune::desktop {

// The program's name, then its arguments.
using CommandLine = std::vector<std::string>;

// The programs that show the panel, best first: if one isn't installed, the next serves. Empty: the desktop
// has no such panel. `desktops` names the current desktop as XDG_CURRENT_DESKTOP does: joined by colons, the
// most specific first ("ubuntu:GNOME").
std::vector<CommandLine> settingsCommands(std::string_view desktops, platform::SettingsPanel panel);

}  // namespace kestrune::desktop
