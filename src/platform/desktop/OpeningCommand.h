#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kestrune::desktop {

using CommandLine = std::vector<std::string>;  // the program's name, then its arguments

// What opens the address, best first; where the first program isn't installed the next one serves. Empty: the
// desktop has nothing for it. `desktops` are the current desktop's names as the environment gives them,
// joined by colons ("ubuntu:GNOME"), the more particular first.
std::vector<CommandLine> openingCommands(std::string_view desktops, std::string_view url);

}  // namespace kestrune::desktop
