#pragma once

#include <array>
#include <cstdint>

#include "ui/components/TimeRange.h"

namespace kestrune::ui {

// How far back the chart of the CPU tab reaches.
enum class CPUTimeRange : std::uint8_t { s60, m5, m10, h1, h12, h24 };

// By raw value.
inline constexpr std::array<TimeRangeChoice, 6> cpuTimeRanges{{
    {"60s", 60},
    {"5m", 300},
    {"10m", 600},
    {"1h", 3600},
    {"12h", 43200},
    {"24h", 86400},
}};

}  // namespace kestrune::ui
