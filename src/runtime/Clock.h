#pragma once

#include <chrono>

#include "runtime/Date.h"

namespace kestrune {

using Duration = std::chrono::nanoseconds;

// An instant of the continuous clock, counted from an arbitrary start. The clock never steps, even if the
// wall clock does, and continues while the machine is suspended.
using ContinuousTime = std::chrono::nanoseconds;

// Both clocks of the machine. Any thread may read them.
class Clock {
 public:
  virtual ~Clock() = default;
  virtual Date now() const = 0;
  virtual ContinuousTime continuousNow() const = 0;
};

}  // namespace kestrune
