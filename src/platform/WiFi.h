#pragma once

#include <optional>
#include <string>
#include <vector>

namespace kestrune::platform {

struct WiFiInterface {
  std::optional<std::string> name;
  bool isStation = false;           // connected to a network as its client
  std::optional<std::string> ssid;  // bytes, usually UTF-8; absent: no network, or its name is withheld
};

// The Wi-Fi interfaces.
class WiFi {
 public:
  virtual ~WiFi() = default;
  // The interface that the machine is connected through, or would be. Absent: there is none. Quick. Main
  // thread.
  virtual std::optional<WiFiInterface> defaultInterface() = 0;
  // The names of all interfaces; an interface may have none. Quick. Main thread.
  virtual std::vector<std::optional<std::string>> interfaceNames() = 0;
  // Looks for a network name that `defaultInterface` left out, in slower ways; `interfaceName` is asked for
  // first. UTF-8; absent: none was found. May run other programs and waits for them without a timeout. Any
  // thread but the main one; several at a time.
  virtual std::optional<std::string> findNetworkName(const std::string& interfaceName) = 0;
};

}  // namespace kestrune::platform
