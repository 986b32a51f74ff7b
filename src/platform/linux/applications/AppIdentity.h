#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace kestrune::platform {

// The application that a process was started for, as its control group names it.
struct AppUnit {
  enum class Kind {
    launched,   // by a desktop, as the desktop file of that id
    flatpak,    // in the sandbox of that application
    snap,       // as the desktop file of that id, which may not exist
    activated,  // over the bus, by that name, which may be no application's
  };
  std::string id;
  Kind kind = Kind::launched;

  bool operator==(const AppUnit&) const = default;
};

// Out of /proc/PID/cgroup. Absent: the process was started otherwise, or the text is garbled.
std::optional<AppUnit> parseAppCgroup(std::string_view text);

// The application's id out of the file that marks a Flatpak sandbox; empty: it has none.
std::string parseFlatpakId(std::string_view text);

}  // namespace kestrune::platform
