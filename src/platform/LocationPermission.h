#pragma once

#include <functional>

namespace kestrune::platform {

// Whether the user lets the program know where it is, without which some platforms withhold the Wi-Fi name.
enum class LocationAuthorization {
  notDetermined = 0,
  restricted = 1,
  denied = 2,
  authorizedAlways = 3,
  authorizedWhenInUse = 4
};

// Main thread.
class LocationPermission {
 public:
  virtual ~LocationPermission() = default;
  virtual LocationAuthorization status() = 0;
  // Asks the user, if that has not been done yet. The answer comes through the watcher.
  virtual void request() = 0;
  // Called on the main thread after each change. One watcher; another takes its place, an empty one ends it.
  virtual void setWatcher(std::function<void()> changed) = 0;
};

}  // namespace kestrune::platform
