#pragma once

#include <chrono>
#include <map>
#include <optional>
#include <string>

#include "platform/Volumes.h"
#include "platform/linux/files/UniqueFd.h"
#include "platform/linux/storage/MountInfo.h"

namespace kestrune::platform {

// The kernel's mounts and udev's labels below `root`. A volume is called by its label; one without is called
// by its device ("vda1", "vg-root"), and one without a device by what is mounted ("overlay", "tank/root").
class LinuxVolumes final : public Volumes {
 public:
  explicit LinuxVolumes(std::string root = "/");

  // `path` is a mount point.
  std::optional<std::string> name(const std::string& path) override;
  // The size of the file system, and what may be written without privileges.
  std::optional<VolumeCapacity> capacity(const std::string& path) override;

 private:
  // A name that was found out, and what it hangs on.
  struct Known {
    std::string name;
    std::string labelFile;
    std::chrono::nanoseconds labelTime{};
  };
  bool mountsChanged();
  std::optional<Known> findOut(const std::string& path) const;
  std::string deviceNumber(const Mount& mount) const;
  std::string deviceName(const Mount& mount, const std::string& number) const;

  std::string root_;
  UniqueFd mounts_;
  std::map<std::string, Known> known_;  // by path
};

}  // namespace kestrune::platform
