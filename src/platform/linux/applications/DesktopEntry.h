#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kestrune::platform {

// What a desktop file says of an application. Texts are bytes, with the file's escapes resolved; empty: not
// said.
struct DesktopEntry {
  std::string name;  // in the language asked for, where there is one
  std::string icon;  // a name in the icon theme, or a path
  std::string exec;  // the command, still quoted
  std::string tryExec;
  bool isHidden = false;     // as if the file weren't there
  bool isNoDisplay = false;  // an application, but in no menu
  bool isTerminal = false;   // one in which other programs run
  bool startsWithSession =
      true;  // in a folder for such entries, unless a desktop's tools have switched it off
};

// `localeNames`: the names of languages to look for, the best first. Absent: the text describes no
// application.
std::optional<DesktopEntry> parseDesktopEntry(std::string_view text,
                                              const std::vector<std::string>& localeNames);

// The program and its arguments out of a command, without the placeholders for files and the like. None where
// the quoting is broken.
std::vector<std::string> execArguments(std::string_view exec);

// The names that desktop files may use for a locale, the best first: of "es_MX.UTF-8" they are "es_MX" and
// "es". None for the languageless locales "C" and "POSIX".
std::vector<std::string> localeNames(std::string_view locale);

}  // namespace kestrune::platform
