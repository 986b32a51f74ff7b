#pragma once

#include <cstdint>
#include <string>

#include "platform/Chip.h"

namespace kestrune::platform {

// The chip as described by /proc/cpuinfo, sysfs, the device tree or the firmware below `root`. Read once, in
// the constructor.
class LinuxChip final : public Chip {
 public:
  explicit LinuxChip(const std::string& root = "/");

  std::string brand() override { return brand_; }
  std::string machineModel() override { return machineModel_; }
  std::int32_t physicalCores() override { return physicalCores_; }
  std::int32_t performanceCores() override { return performanceCores_; }
  std::int32_t efficiencyCores() override { return efficiencyCores_; }

 private:
  void countCores(const std::string& root);

  std::string brand_;
  std::string machineModel_;
  std::int32_t physicalCores_ = 0;
  std::int32_t performanceCores_ = 0;
  std::int32_t efficiencyCores_ = 0;
};

}  // namespace kestrune::platform
