#pragma once

#include <string>

#include "platform/Memory.h"
#include "platform/linux/files/KeptFile.h"
#include "platform/linux/memory/MemInfo.h"

namespace kestrune::platform {

// proc/meminfo and sys/block/zram*/mm_stat below `root`. Used memory is MemTotal − MemAvailable, the figure
// of free(1): `compressed` is what zswap and zram take up themselves, `active` is anonymous and shared
// memory, `wired` is the rest.
class LinuxMemory final : public Memory {
 public:
  explicit LinuxMemory(std::string root = "/");

  std::optional<VirtualMemoryPages> virtualMemoryPages() override;
  // The unit of the counters above, which is not the processor's page: meminfo counts in KiB.
  std::uint64_t pageSize() override { return bytesPerKibibyte; }
  std::optional<SwapUsage> swapUsage() override;
  std::optional<std::uint64_t> physicalBytes() override;

 private:
  static constexpr std::uint64_t bytesPerKibibyte = 1024;

  std::optional<MemInfo> readMemInfo();
  std::uint64_t zramKibibytes() const;

  std::string root_;
  KeptFile memInfo_;
};

}  // namespace kestrune::platform
