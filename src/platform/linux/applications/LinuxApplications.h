#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "platform/Applications.h"
#include "platform/ProcessEnvironment.h"
#include "platform/linux/applications/DesktopIndex.h"

namespace kestrune::platform {

// The places named by the user's environment, with the conventional defaults for what it leaves out.
ApplicationPlaces applicationPlaces(ProcessEnvironment& environment);

// An application is what has a desktop file, and the file's id is the bundle identifier. A process belongs to
// the application that the desktop started it for (as reported by its control group), else to that of its
// Flatpak sandbox, else to the application whose command starts the program that it runs. Programs running in
// a terminal don't belong to the terminal. An application is installed where its desktop file is.
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
