#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "platform/Applications.h"
#include "platform/ProcessEnvironment.h"
#include "platform/linux/applications/DesktopIndex.h"

namespace kestrune::platform {

// The places that the user's environment names, or those that it leaves to convention.
ApplicationPlaces applicationPlaces(ProcessEnvironment& environment);

// Applications are those with a desktop file, and the file's id is the bundle identifier. A process belongs
// to the one that the desktop started it for (which its control group tells), else to that of its Flatpak
// sandbox, else to the one whose command starts the program that it runs. What runs in a terminal doesn't
// belong to the terminal. An application is installed where its desktop file is.
class LinuxApplications final : public Applications {
 public:
  LinuxApplications();
  explicit LinuxApplications(ApplicationPlaces places);

  std::optional<RunningApplication> runningApplication(std::int32_t pid) override;
  std::optional<std::string> applicationPath(const std::string& bundleIdentifier) override;
  std::string processName(std::int32_t pid) override;

 private:
  const IndexedApplication* byProgram(std::int32_t pid) const;

  std::string root_;
  DesktopIndex index_;
};

}  // namespace kestrune::platform
