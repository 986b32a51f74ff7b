#pragma once

#include <chrono>
#include <map>
#include <optional>
#include <string>

#include "platform/Volumes.h"
#include "platform/linux/files/UniqueFd.h"
#include "platform/linux/storage/MountInfo.h"

namespace kestrune::platform {

// Volumes from the kernel's mounts and udev's labels below `root`. A volume is named by its label, or else by
// its device ("vda1", "vg-root"), or else by what is mounted ("overlay", "tank/root").
class LinuxVolumes final : public Volumes {
 public:
  explicit LinuxVolumes(std::string root = "/");

  // `path` is a mount point.
  std::optional<std::string> name(const std::string& path) override;
  // The size of the file system, and the space that is available without privileges.
  std::optional<VolumeCapacity> capacity(const std::string& path) override;

 private:
  // A name, and the file that it depends on.
  struct Known {
    std::string name;
    std::string labelFile;
    std::chrono::nanoseconds labelTime{};
  };
  bool mountsChanged();
  std::optional<Known> findName(const std::string& path) const;
  std::string deviceNumber(const Mount& mount) const;
  std::string deviceName(const Mount& mount, const std::string& number) const;

  std::string root_;
  UniqueFd mounts_;
  std::map<std::string, Known> known_;  // by path
};

}  // namespace kestrune::platform
