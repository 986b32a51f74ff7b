#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace kestrune::platform {

// Lines of /proc/meminfo, in KiB. Absent: the line is missing or no number.
struct MemInfo {
  std::optional<std::uint64_t> memTotal;
  std::optional<std::uint64_t> memAvailable;  // Linux 3.14 and later
  std::optional<std::uint64_t> memFree;
  std::optional<std::uint64_t> buffers;
  std::optional<std::uint64_t> cached;
  std::optional<std::uint64_t> shmem;
  std::optional<std::uint64_t> anonPages;
  std::optional<std::uint64_t> zswap;  // the pool itself; Linux 5.19 and later
  std::optional<std::uint64_t> swapTotal;
  std::optional<std::uint64_t> swapFree;
};

MemInfo parseMemInfo(std::string_view text);

// The RAM that a compressed RAM disk takes up, in bytes: the third field of its mm_stat. Absent: there is
// none.
std::optional<std::uint64_t> parseZramUsage(std::string_view mmStat);

}  // namespace kestrune::platform
