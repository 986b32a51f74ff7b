#pragma once

#include <functional>

#include "platform/LocationPermission.h"

namespace kestrune::linux_platform {

// Nothing withholds the Wi-Fi name here, so that there is nothing to ask for and nothing that changes.
class LinuxLocationPermission final : public platform::LocationPermission {
 public:
  platform::LocationAuthorization status() override {
    return platform::LocationAuthorization::authorizedAlways;
  }
  void request() override {}
  void setWatcher(std::function<void()>) override {}
};

}  // namespace kestrune::linux_platform
