#include "platform/linux/processes/ProgramName.h"

#include <algorithm>
#include <array>

#include "platform/linux/files/Files.h"

namespace kestrune::platform {
namespace {

constexpr auto interpreters = std::to_array<std::string_view>(
    {"ash",      "bash",        "bun",   "busybox", "dash", "deno", "dotnet", "electron", "fish",
     "gjs",      "gjs-console", "guile", "java",    "js",   "ksh",  "lua",    "luajit",   "mksh",
     "mono",     "mono-sgen",   "node",  "nodejs",  "perl", "php",  "pypy",   "python",   "qml",
     "qmlscene", "ruby",        "sh",    "tclsh",   "wish", "zsh"});
static_assert(std::ranges::is_sorted(interpreters));

constexpr auto launchers = std::to_array<std::string_view>({"bwrap",     "dbus-launch", "dbus-run-session",
                                                            "dbus-send", "exo-open",    "firejail",
                                                            "flatpak",   "gdbus",       "gio",
                                                            "gksu",      "gtk-launch",  "kdesu",
                                                            "nice",      "nohup",       "pkexec",
                                                            "setsid",    "snap",        "su",
                                                            "sudo",      "systemctl",   "systemd-run",
                                                            "wine",      "wine64",      "x-terminal-emulator",
                                                            "xdg-open",  "xdg-su"});
static_assert(std::ranges::is_sorted(launchers));

// "python" of "python3.11", "guile" of "guile-3.0".
std::string_view withoutVersion(std::string_view name) {
  const auto last = name.find_last_not_of("0123456789.-");
  return name.substr(0, last == std::string_view::npos ? 0 : last + 1);
}

bool isAssignment(std::string_view argument) {
  const auto equals = argument.find('=');
  return equals != std::string_view::npos && equals > 0 && argument.find('/') > equals;
}

// The script among an interpreter's arguments.
std::string_view scriptIn(std::span<const std::string> arguments) {
  constexpr auto textOptions = std::to_array<std::string_view>({"-c", "-e", "-E", "-m", "--eval"});
  for (const std::string& argument : arguments) {
    if (std::ranges::find(textOptions, argument) != textOptions.end()) return {};
    if (!argument.starts_with('-')) return argument;
  }
  return {};
}

}  // namespace

bool isInterpreter(std::string_view fileName) {
  return std::ranges::binary_search(interpreters, withoutVersion(fileName));
}

std::string_view programIn(std::span<const std::string> arguments) {
  while (!arguments.empty() && baseName(arguments.front()) == "env") {
    arguments = arguments.subspan(1);
    while (!arguments.empty() && (isAssignment(arguments.front()) || arguments.front().starts_with('-'))) {
      arguments = arguments.subspan(1);
    }
  }
  if (arguments.empty()) return {};
  const std::string_view name = baseName(arguments.front());
  if (isInterpreter(name)) return scriptIn(arguments.subspan(1));
  return std::ranges::binary_search(launchers, name) ? std::string_view() : arguments.front();
}

}  // namespace kestrune::platform
