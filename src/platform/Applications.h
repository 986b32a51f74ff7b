#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace kestrune::platform {

// A running application, as the desktop knows it.
struct RunningApplication {
  std::optional<std::string> bundleIdentifier;  // "org.mozilla.firefox"
  std::string localizedName;                    // in the user's language; may be empty
  // A name in the desktop's icon theme, or the path of a picture. Absent: it has no icon.
  std::optional<std::string> iconName;
};

// What the desktop knows of programs. Texts are bytes. Any thread but the main one, one at a time.
class Applications {
 public:
  virtual ~Applications() = default;
  // The application that the process belongs to. Absent: the desktop knows none.
  virtual std::optional<RunningApplication> runningApplication(std::int32_t pid) = 0;
  // Where the application is installed. Absent: unknown.
  virtual std::optional<std::string> applicationPath(const std::string& bundleIdentifier) = 0;
  // The name of a process; empty if it has ended or has no name.
  virtual std::string processName(std::int32_t pid) = 0;
};

}  // namespace kestrune::platform
