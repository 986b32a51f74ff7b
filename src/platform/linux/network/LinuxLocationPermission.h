#pragma once

#include <functional>

#include "platform/LocationPermission.h"

namespace kestrune::platform {

// Linux doesn't withhold the Wi-Fi name, so there is nothing to ask for and nothing changes.
class LinuxLocationPermission final : public LocationPermission {
 public:
  LocationAuthorization status() override { return LocationAuthorization::authorizedAlways; }
  void request() override {}
  void setWatcher(std::function<void()>) override {}
};

}  // namespace kestrune::platform
