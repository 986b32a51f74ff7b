#pragma once

#include <string>

#include "platform/Memory.h"
#include "platform/linux/files/KeptFile.h"
#include "platform/linux/memory/MemInfo.h"

namespace kestrune::platform {

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
