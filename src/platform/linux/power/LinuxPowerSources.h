#pragma once

#include <string>
#include <vector>

#include "platform/PowerSources.h"
#include "platform/linux/power/BatteryPack.h"

namespace kestrune::platform {

// The batteries in sys/class/power_supply below `root` that power the machine itself and are inserted.
class LinuxPowerSources final : public PowerSources {
 public:
  explicit LinuxPowerSources(std::string root = "/");

  std::optional<PowerSource> powerSource() override;
  std::optional<BatteryRegistry> battery() override;

 private:
  std::vector<BatteryPack> readPacks() const;

  std::string root_;
};

}  // namespace kestrune::platform
