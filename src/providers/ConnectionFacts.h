#pragma once

#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "platform/LocationPermission.h"
#include "platform/NetworkInterfaces.h"
#include "platform/WiFi.h"

namespace kestrune {

struct InterfaceInfo {
  std::string id;    // the kernel's name, such as "enp3s0"
  std::string kind;  // "Wi-Fi", "Ethernet" or "VPN"
  std::optional<std::string> ipAddress;
  std::uint64_t totalSent = 0;  // bytes, since the interface came up
  std::uint64_t totalRecv = 0;
  friend bool operator==(const InterfaceInfo&, const InterfaceInfo&) = default;
};

// How the machine is connected. Texts are UTF-8.
struct ConnectionFacts {
  std::string label;  // "Wi-Fi", "Ethernet" or "Not connected"
  std::optional<std::string> ssid;
  bool needsLocation = false;            // the name is withheld for lack of permission
  std::optional<std::string> ipAddress;  // dotted IPv4 address of the connecting interface
  std::vector<InterfaceInfo> interfaces;
};

// What the main thread knows when a refresh of the connection starts.
struct ConnectionQuestion {
  std::string wifiName;
  bool stationMode = false;
  std::optional<std::string> wifiSSID;
  std::set<std::string> wifiNames;
  platform::LocationAuthorization authStatus = platform::LocationAuthorization::notDetermined;
};

// Finds the facts. May wait for as long as the search for a network name takes. Off the main thread.
ConnectionFacts findConnectionFacts(const ConnectionQuestion& question,
                                    platform::NetworkInterfaces& interfaces, platform::WiFi& wifi);

}  // namespace kestrune
