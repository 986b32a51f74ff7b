#pragma once

#include "platform/SystemFacts.h"

namespace kestrune::linux_platform {

// The boot time is what the wall clock shows less what CLOCK_BOOTTIME does, which goes on while the machine
// sleeps. That is how the kernel works out "btime" in /proc/stat too, but it costs no reading of that file,
// which is long on a machine with many processors.
class LinuxSystemFacts final : public platform::SystemFacts {
 public:
  std::optional<std::int64_t> bootTime() override;
};

}  // namespace kestrune::linux_platform
