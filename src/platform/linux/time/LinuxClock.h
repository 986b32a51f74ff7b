#pragma once

#include "runtime/Clock.h"

namespace kestrune::platform {

// The kernel's clocks. The continuous one counts from boot and includes time asleep.
class LinuxClock final : public Clock {
 public:
  Date now() const override;
  ContinuousTime continuousNow() const override;
};

}  // namespace kestrune::platform
