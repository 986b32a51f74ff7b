#pragma once

#include <functional>

namespace kestrune::platform {

// Whether the program may know its location. Without that permission some platforms withhold the Wi-Fi name.
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
  // Asks the user, unless they have been asked before. The watcher is called with the answer.
  virtual void request() = 0;
  // Called on the main thread after each change. Replaces the previous watcher; an empty function removes it.
  virtual void setWatcher(std::function<void()> changed) = 0;
};

}  // namespace kestrune::platform
