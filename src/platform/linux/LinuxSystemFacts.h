#pragma once

#include <string>
#include <utility>

#include "platform/ProcessEnvironment.h"
#include "platform/SystemFacts.h"

namespace kestrune::platform {

// The boot time is the wall clock minus CLOCK_BOOTTIME, which keeps running while the machine sleeps. The
// kernel computes "btime" in /proc/stat the same way, but that file is long on a machine with many
// processors. The version is the distribution's name from os-release and the kernel's release.
class LinuxSystemFacts final : public SystemFacts {
 public:
  // Reads below `root`. The environment must outlive this.
  LinuxSystemFacts(std::string root, ProcessEnvironment& environment)
      : root_(std::move(root)), environment_(environment) {}

  std::optional<std::int64_t> bootTime() override;
  std::string operatingSystemVersion() override;
  std::vector<std::string> languages() override;

 private:
  std::string root_;
  ProcessEnvironment& environment_;
};

}  // namespace kestrune::platform
