#pragma once

#include <string>
#include <utility>

#include "platform/ProcessEnvironment.h"
#include "platform/SystemFacts.h"

namespace kestrune::platform {

// The boot time is what the wall clock shows less what CLOCK_BOOTTIME does, which goes on while the machine
// sleeps. That is how the kernel works out "btime" in /proc/stat too, but it costs no reading of that file,
// which is long on a machine with many processors. The version is the distribution's name from os-release and
// the kernel's release.
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
