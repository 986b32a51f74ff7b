#include "platform/linux/network/LinuxWiFi.h"

#include <utility>

#include <linux/nl80211.h>

#include "platform/linux/files/Directory.h"
#include "platform/linux/files/Files.h"
#include "platform/linux/network/Nl80211Socket.h"

namespace kestrune::platform {
namespace {

class Nl80211Source final : public RadioSource {
 public:
  std::optional<std::vector<RadioInterface>> interfaces() override {
    const auto answer = socket_.list(NL80211_CMD_GET_INTERFACE);
    if (!answer) return std::nullopt;
    std::vector<RadioInterface> interfaces;
    for (const auto& attributes : *answer) {
      if (auto interface = parseRadioInterface(attributes)) interfaces.push_back(*std::move(interface));
    }
    return interfaces;
  }

  std::optional<std::string> heardSsid(std::uint32_t interfaceIndex) override {
    const auto answer = socket_.list(NL80211_CMD_GET_SCAN, interfaceIndex);
    if (!answer) return std::nullopt;
    for (const auto& attributes : *answer) {
      const auto network = parseHeardNetwork(attributes);
      if (network && network->isAssociated && network->ssid) return network->ssid;
    }
    return std::nullopt;
  }

 private:
  Nl80211Socket socket_;
};

}  // namespace

std::unique_ptr<RadioSource> makeNl80211Source() {
  return std::make_unique<Nl80211Source>();
}

LinuxWiFi::LinuxWiFi(std::string root, std::unique_ptr<RadioSource> radios)
    : root_(std::move(root)), radios_(std::move(radios)), tools_(root_) {}

std::optional<WiFiInterface> LinuxWiFi::defaultInterface() {
  std::optional<WiFiInterface> unassociated;
  for (const auto& interface : interfaces()) {
    if (!interface.isClient) continue;
    WiFiInterface station{.name = interface.name, .ssid = interface.ssid};
    station.isStation = isAssociated(interface);
    if (station.isStation) {
      // Old kernels don't report the name with the interface, and a hidden network sends it only in its
      // answers.
      if (!station.ssid && interface.index != 0) station.ssid = radios_->heardSsid(interface.index);
      return station;
    }
    if (!unassociated) unassociated = std::move(station);
  }
  return unassociated;
}

std::vector<std::optional<std::string>> LinuxWiFi::interfaceNames() {
  std::vector<std::optional<std::string>> names;
  for (auto& interface : interfaces()) names.push_back(std::move(interface.name));
  return names;
}

std::optional<std::string> LinuxWiFi::findNetworkName(const std::string& interfaceName) {
  return tools_.find(interfaceName);
}

// Without a radio the question might make the kernel load a module that nothing else needs.
std::vector<RadioInterface> LinuxWiFi::interfaces() {
  if (entryNames(below(root_, "sys/class/ieee80211")).empty()) return {};
  return radios_->interfaces().value_or(std::vector<RadioInterface>{});
}

bool LinuxWiFi::isAssociated(const RadioInterface& interface) const {
  if (interface.ssid) return true;
  return interface.name && readText(below(root_, "sys/class/net/" + *interface.name + "/carrier")) == "1";
}

}  // namespace kestrune::platform
