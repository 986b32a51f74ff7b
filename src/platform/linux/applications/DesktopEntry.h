#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/ProcessEnvironment.h"

namespace kestrune::platform {

// The contents of an application's desktop file. Strings are bytes with the file's escapes resolved; empty if
// the key is missing.
struct DesktopEntry {
  std::string name;  // in the best of the languages asked for, else untranslated
  std::string icon;  // a name in the icon theme, or a path
  std::string exec;  // the command, still quoted
  std::string tryExec;
  bool isHidden = false;     // to be treated as if the file didn't exist
  bool isNoDisplay = false;  // not listed in menus
  bool isTerminal = false;   // a terminal emulator, which runs other programs
  // False where a desktop's tools have switched off an autostart entry.
  bool startsWithSession = true;
};

// `localeNames`: the languages to look for, best first. Absent: the text doesn't describe an application.
std::optional<DesktopEntry> parseDesktopEntry(std::string_view text,
                                              const std::vector<std::string>& localeNames);

// Splits a command into the program and its arguments, without placeholders such as %U. Empty if the quoting
// is malformed.
std::vector<std::string> execArguments(std::string_view exec);

// The names that desktop files may use for a locale, best first: "es_MX" and "es" for "es_MX.UTF-8". Empty
// for "C" and "POSIX", which have no language.
std::vector<std::string> localeNames(std::string_view locale);

// The user's languages from the environment, best first, each followed by its more general names: "es_MX",
// "es". Empty if the environment names none.
std::vector<std::string> userLanguages(ProcessEnvironment& environment);

}  // namespace kestrune::platform
