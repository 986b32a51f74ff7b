#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace kestrune::platform {

// The states of a processor in the order of /proc/stat. The times of guests that follow there are already
// part of `user` and `nice`.
enum RawState : std::size_t {
  rawUser,
  rawNice,
  rawSystem,
  rawIdle,
  rawIoWait,
  rawIrq,
  rawSoftIrq,
  rawSteal,
  rawStates
};

// One `cpuN` line: cumulative times in clock ticks, 0 for states that an old kernel lacks.
struct RawProcessor {
  std::int32_t id = 0;
  std::array<std::uint64_t, rawStates> ticks{};
  friend bool operator==(const RawProcessor&, const RawProcessor&) = default;
};

// Reads the processors that are online from the text of /proc/stat into `processors`, in the order of the
// file. False, with `processors` unspecified, if there are none, the text is invalid, or it ends before the
// line after the last processor, so that a processor may be missing or its last number truncated.
bool parseProcStat(std::string_view text, std::vector<RawProcessor>& processors);

}  // namespace kestrune::platform
