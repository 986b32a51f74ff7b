#pragma once

#include <map>
#include <string>

#include "platform/BlockStorage.h"
#include "platform/linux/files/KeptFile.h"

namespace kestrune::platform {

// sys/block/*/stat below `root`. A drive is what has hardware behind it: partitions are not listed there, and
// loop, RAM and compressed RAM disks, device mapper and RAID volumes have none. A drive that is still there
// but can't be read for a moment keeps its last figures, so that its return is no jump.
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
  std::map<std::string, Device, std::less<>> devices_;  // what has been met, by name
};

}  // namespace kestrune::platform
