#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/LocationPermission.h"
#include "platform/WiFi.h"
#include "platform/linux/network/Nl80211.h"

namespace kestrune::platform {

// Finds the name of a Wi-Fi network by running the command-line tools that report it, where they are
// installed below `root`. They are looked for once, when this is made. Any thread; several at a time.
class NetworkNameTools {
 public:
  explicit NetworkNameTools(const std::string& root);

  // The first name that a tool reports: for the interface, for en0, for en1, or for the radio. UTF-8. Waits
  // for the tools without a timeout. Absent: no tool is installed, or none reports a name.
  std::optional<std::string> find(const std::string& interfaceName) const;

 private:
  // Paths; empty if the tool isn't installed.
  std::string networkSetup_;
  std::string airport_;
};

// Answers questions about wireless interfaces. Main thread.
class RadioSource {
 public:
  virtual ~RadioSource() = default;
  // The interfaces of this process's network namespace, in the kernel's order. Absent: they can't be read.
  virtual std::optional<std::vector<RadioInterface>> interfaces() = 0;
  // The name of the network that the interface is connected to, as heard over the air. Absent: it isn't
  // connected, or the network is hidden.
  virtual std::optional<std::string> heardSsid(std::uint32_t interfaceIndex) = 0;
};

// nl80211, which needs no privilege.
std::unique_ptr<RadioSource> makeNl80211Source();

// The wireless interfaces. The default interface is the first that is connected to a network as its client,
// or else the first that could be; access points and other modes don't count. Nothing is asked unless the
// machine has a radio, according to sys/class/ieee80211 below `root`.
class LinuxWiFi final : public WiFi {
 public:
  explicit LinuxWiFi(std::string root = "/", std::unique_ptr<RadioSource> radios = makeNl80211Source());

  std::optional<WiFiInterface> defaultInterface() override;
  std::vector<std::optional<std::string>> interfaceNames() override;
  std::optional<std::string> findNetworkName(const std::string& interfaceName) override;

 private:
  std::vector<RadioInterface> interfaces();
  bool isAssociated(const RadioInterface& interface) const;

  std::string root_;
  std::unique_ptr<RadioSource> radios_;
  const NetworkNameTools tools_;
};

// Linux doesn't withhold the Wi-Fi name, so there is nothing to ask for and nothing changes.
class LinuxLocationPermission final : public LocationPermission {
 public:
  LocationAuthorization status() override { return LocationAuthorization::authorizedAlways; }
  void request() override {}
  void setWatcher(std::function<void()>) override {}
};

}  // namespace kestrune::platform
