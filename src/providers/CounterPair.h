#pragma once

#include <cstdint>
#include <optional>

#include "runtime/Date.h"

namespace kestrune {

// What two counters gained over `seconds`, which is above 0.1.
struct CounterGrowth {
  std::uint64_t first = 0;
  std::uint64_t second = 0;
  double seconds = 0;

  double firstPerSecond() const { return static_cast<double>(first) / seconds; }
  double secondPerSecond() const { return static_cast<double>(second) / seconds; }
};

// One reading of two cumulative counters that belong together, such as bytes sent and received.
struct CounterPair {
  std::uint64_t first = 0;
  std::uint64_t second = 0;
  Date time = Date::distantPast;  // of the reading

  // Absent if the readings are at most 0.1 s apart: over so short a span a rate would be a guess. A counter
  // that fell has restarted, or part of its sum has disappeared; its growth is 0.
  std::optional<CounterGrowth> growthSince(const CounterPair& before) const {
    constexpr double minSeconds = 0.1;
    const auto growth = [](std::uint64_t now, std::uint64_t then) { return now < then ? 0 : now - then; };
    const double seconds = time - before.time;
    if (!(seconds > minSeconds)) return std::nullopt;
    return CounterGrowth{growth(first, before.first), growth(second, before.second), seconds};
  }
};

}  // namespace kestrune
