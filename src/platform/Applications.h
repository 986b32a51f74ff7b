#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace kestrune::platform {

// A running application, as the desktop knows it.
struct RunningApplication {
  std::optional<std::string> bundleIdentifier;  // "org.mozilla.firefox"
  std::string localizedName;                    // in the user's language; possibly empty
  // Its icon: a name in the desktop's icon theme, or the path of a picture. Absent: it names none.
  std::optional<std::string> iconName;
};

// What the desktop knows of programs. Texts are bytes. Any thread but the main one, one at a time.
class Applications {
 public:
  virtual ~Applications() = default;
  // The application that the process belongs to. Absent: it belongs to none that the desktop knows.
  virtual std::optional<RunningApplication> runningApplication(std::int32_t pid) = 0;
  // Where the application is installed. Absent: nowhere that is known.
  virtual std::optional<std::string> applicationPath(const std::string& bundleIdentifier) = 0;
  // The name of a process; empty: it is gone or has none.
  virtual std::string processName(std::int32_t pid) = 0;
};

}  // namespace kestrune::platform
