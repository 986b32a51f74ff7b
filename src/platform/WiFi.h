#pragma once

#include <optional>
#include <string>
#include <vector>

namespace kestrune::platform {

struct WiFiInterface {
  std::optional<std::string> name;
  bool isStation = false;           // associated with a network, as its client
  std::optional<std::string> ssid;  // bytes, seldom anything but UTF-8; absent: none, or it is withheld
};

// The Wi-Fi interfaces. Quick. Main thread.
class WiFi {
 public:
  virtual ~WiFi() = default;
  // The one that the machine is connected through, or would be. Absent: there is none.
  virtual std::optional<WiFiInterface> defaultInterface() = 0;
  // The names of all. An interface may have none.
  virtual std::vector<std::optional<std::string>> interfaceNames() = 0;
};

}  // namespace kestrune::platform
