#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace kestrune::platform {

// The states of a processor in the order in which /proc/stat lists their times. Times of guests follow there;
// they are already part of `user` and `nice`.
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

// One `cpuN` line: cumulative times in units of the kernel's clock tick, 0 for a state that an old kernel
// lacks.
struct RawProcessor {
  std::int32_t id = 0;
  std::array<std::uint64_t, rawStates> ticks{};
  friend bool operator==(const RawProcessor&, const RawProcessor&) = default;
};

// Reads the processors that are online from the text of /proc/stat into `processors`, in the order of the
// file. False, with `processors` in any state: the text has none, is garbled, or ends before the line that
// follows the last processor, so that one may be missing or its last number cut short.
bool parseProcStat(std::string_view text, std::vector<RawProcessor>& processors);

}  // namespace kestrune::platform
