#pragma once

#include <string>

#include "platform/Memory.h"
#include "platform/linux/KeptFile.h"
#include "platform/linux/MemInfo.h"

namespace kestrune::linux_platform {

// proc/meminfo and sys/block/zram*/mm_stat below `root`. Used memory is MemTotal − MemAvailable, the figure
// of free(1): `compressed` is what zswap and zram take up themselves, `active` is anonymous and shared
// memory, `wired` is the rest.
class LinuxMemory final : public platform::Memory {
 public:
  explicit LinuxMemory(std::string root = "/");

  std::optional<platform::VirtualMemoryPages> virtualMemoryPages() override;
  // The unit of the counters above, which is not the processor's page: meminfo counts in KiB.
  std::uint64_t pageSize() override { return bytesPerKibibyte; }
  std::optional<platform::SwapUsage> swapUsage() override;
  std::optional<std::uint64_t> physicalBytes() override;

 private:
  static constexpr std::uint64_t bytesPerKibibyte = 1024;

  std::optional<MemInfo> readMemInfo();
  std::uint64_t zramKibibytes() const;

  std::string root_;
  KeptFile memInfo_;
};

}  // namespace kestrune::linux_platform
