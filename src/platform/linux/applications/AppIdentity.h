#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace kestrune::platform {

// The application that a process was started for, as named by its control group.
struct AppUnit {
  enum class Kind {
    launched,   // by a desktop, from the desktop file with that id
    flatpak,    // in the sandbox of that application
    snap,       // `id` is the desktop file that the application has, if any
    activated,  // by the bus; `id` is a bus name and need not be an application's
  };
  std::string id;
  Kind kind = Kind::launched;

  bool operator==(const AppUnit&) const = default;
};

// Parses /proc/PID/cgroup. Absent: the process was started in another way, or the text is malformed.
std::optional<AppUnit> parseAppCgroup(std::string_view text);

// The application's id in the file .flatpak-info of a sandbox. Empty: the file names no application.
std::string parseFlatpakId(std::string_view text);

}  // namespace kestrune::platform
