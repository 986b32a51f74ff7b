#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace kestrune::platform {

// A running application as the desktop knows it.
struct RunningApplication {
  std::optional<std::string> bundleIdentifier;  // "org.mozilla.firefox"
  std::string localizedName;                    // in the user's language; possibly empty
  // A name in the desktop's icon theme, or the path of an image. Absent: the application names no icon.
  std::optional<std::string> iconName;
};

// What the desktop knows about programs. Strings are bytes, not necessarily valid UTF-8. Any thread but the
// main one, one at a time.
class Applications {
 public:
  virtual ~Applications() = default;
  // The application that the process belongs to. Absent: none that the desktop knows.
  virtual std::optional<RunningApplication> runningApplication(std::int32_t pid) = 0;
  // Where the application is installed. Absent: unknown.
  virtual std::optional<std::string> applicationPath(const std::string& bundleIdentifier) = 0;
  // The name of a process. Empty: the process is gone or has no name.
  virtual std::string processName(std::int32_t pid) = 0;
};

}  // namespace kestrune::platform
