#pragma once

#include "runtime/Clock.h"

namespace kestrune::platform {

// The kernel's clocks; the continuous one counts from the machine's start.
class LinuxClock final : public Clock {
 public:
  Date now() const override;
  ContinuousTime continuousNow() const override;
};

}  // namespace kestrune::platform
