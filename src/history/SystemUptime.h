#pragma once

#include <cstdint>

#include "platform/SystemFacts.h"
#include "runtime/Date.h"

namespace kestrune {

struct SystemUptime {
  std::int64_t days = 0;
  std::int64_t hours = 0;    // beyond the days
  std::int64_t minutes = 0;  // beyond the hours
};

// How long the machine has been running. A boot time in the future counts as now, an unknown one as 1970.
SystemUptime systemUptime(platform::SystemFacts& facts, Date now);

}  // namespace kestrune
