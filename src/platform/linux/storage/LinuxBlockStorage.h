#pragma once

#include <map>
#include <string>
#include <string_view>

#include "platform/BlockStorage.h"
#include "platform/linux/files/KeptFile.h"

namespace kestrune::platform {

// The counters of a drive's `stat` file, which always counts sectors of 512 bytes. A counter is absent if it
// is missing or implausible.
BlockDriver parseBlockStat(std::string_view text);

// Drives from sys/block/*/stat below `root`. A drive has hardware behind it: loop, RAM and compressed RAM
// disks, device mapper and RAID volumes don't, and partitions aren't listed there. A drive that can't be read
// for a moment keeps its last figures, so that the sum doesn't jump.
class LinuxBlockStorage final : public BlockStorage {
 public:
  explicit LinuxBlockStorage(std::string root = "/");

  std::optional<std::vector<BlockDriver>> blockDrivers() override;

 private:
  struct Device {
    KeptFile stat;
    bool isDrive;
    BlockDriver last;
    bool isListed = true;
  };
  Device makeDevice(const std::string& name) const;

  std::string root_;
  std::map<std::string, Device, std::less<>> devices_;  // by name
};

}  // namespace kestrune::platform
