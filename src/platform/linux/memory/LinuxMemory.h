#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/Memory.h"
#include "platform/linux/files/KeptFile.h"

namespace kestrune::platform {

// Figures of /proc/meminfo, in bytes. Absent: the line is missing, isn't a number or is more than any machine
// has, so that sums can't overflow.
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

// The bytes of memory that a compressed RAM disk takes up: the third field of its mm_stat. Absent as above.
std::optional<std::uint64_t> parseZramUsage(std::string_view mmStat);

// Memory as proc/meminfo and sys/block/zram*/mm_stat below `root` report it. Used memory is MemTotal −
// MemAvailable, as in free(1). Of that, `compressed` is what zswap and zram take up, `active` is anonymous
// and shared memory, and `wired` is the rest.
class LinuxMemory final : public Memory {
 public:
  explicit LinuxMemory(std::string root = "/");

  std::optional<MemoryUsage> usage() override;
  std::optional<SwapUsage> swapUsage() override;
  std::optional<std::uint64_t> physicalBytes() override;

 private:
  std::optional<MemInfo> readMemInfo();
  std::uint64_t zramBytes() const;

  std::string root_;
  KeptFile memInfo_;
};

}  // namespace kestrune::platform
