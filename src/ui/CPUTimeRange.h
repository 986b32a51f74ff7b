#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "core/HistoryRing.h"

namespace kestrune::ui {

// How far back the chart of the CPU tab reaches.
enum class CPUTimeRange : std::uint8_t { s60, m5, m10, h1, h12, h24 };

struct CPUTimeRangeChoice {
  std::string_view label;   // localizable
  std::size_t samples = 0;  // at one a second
};

// By raw value.
inline constexpr std::array<CPUTimeRangeChoice, 6> cpuTimeRanges{{
    {"60s", 60},
    {"5m", 300},
    {"10m", 600},
    {"1h", 3600},
    {"12h", 43200},
    {"24h", 86400},
}};

// The last `samples` percentages as fractions, oldest first. More than 120 are thinned to 120 of them, the
// first and the last included; fewer than two are none.
std::vector<double> usageSeries(const HistoryRing<double>& percentages, std::size_t samples);

}  // namespace kestrune::ui
