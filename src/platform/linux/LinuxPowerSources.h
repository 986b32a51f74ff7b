#pragma once

#include <string>
#include <vector>

#include "platform/PowerSources.h"
#include "platform/linux/BatteryPack.h"

namespace kestrune::linux_platform {

// The batteries in sys/class/power_supply below `root` that drive the machine itself and are put in.
class LinuxPowerSources final : public platform::PowerSources {
 public:
  explicit LinuxPowerSources(std::string root = "/");

  std::optional<platform::PowerSource> powerSource() override;
  std::optional<platform::BatteryRegistry> battery() override;

 private:
  std::vector<BatteryPack> readPacks() const;

  std::string root_;
};

}  // namespace kestrune::linux_platform
