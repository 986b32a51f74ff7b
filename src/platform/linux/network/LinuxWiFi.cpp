#include "platform/linux/network/LinuxWiFi.h"

#include <string_view>
#include <utility>
#include <vector>

#include <linux/nl80211.h>

#include "platform/linux/files/Directory.h"
#include "platform/linux/files/Files.h"
#include "platform/linux/files/Text.h"
#include "platform/linux/network/Nl80211Socket.h"
#include "platform/linux/program/ToolRunner.h"
#include "runtime/Utf8.h"

namespace kestrune::platform {
namespace {

constexpr std::string_view networkSetupTool = "usr/sbin/networksetup";
constexpr std::string_view airportTool =
    "System/Library/PrivateFrameworks/Apple80211.framework/Versions/Current/Resources/airport";

std::string installedTool(const std::string& root, std::string_view tool) {
  std::string path = below(root, tool);
  return isExecutableFile(path) ? path : std::string();
}

// Empty: the tool couldn't be run, or its output isn't UTF-8.
std::string outputOf(const std::string& tool, const std::vector<std::string>& arguments) {
  if (tool.empty()) return {};
  std::string output = runTool(tool, arguments).value_or("");
  return repairedUtf8(output) == output ? output : std::string();
}

std::optional<std::string> unlessEmpty(std::string_view text) {
  return text.empty() ? std::nullopt : std::optional<std::string>(text);
}

// The name in the answer for one interface.
std::optional<std::string> nameInAnswer(std::string_view output) {
  constexpr std::string_view marker = "Current Wi-Fi Network:";
  const auto found = output.find(marker);
  if (found == std::string_view::npos) return std::nullopt;
  return unlessEmpty(trimmed(output.substr(found + marker.size())));
}

// The name in the report about the radio.
std::optional<std::string> nameInReport(std::string_view output) {
  constexpr std::string_view marker = "SSID: ";
  while (!output.empty()) {
    const std::string_view line = trimmed(takeLine(output));
    if (line.starts_with(marker)) return unlessEmpty(trimmed(line.substr(marker.size())));
  }
  return std::nullopt;
}

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

NetworkNameTools::NetworkNameTools(const std::string& root)
    : networkSetup_(installedTool(root, networkSetupTool)), airport_(installedTool(root, airportTool)) {}

std::optional<std::string> NetworkNameTools::find(const std::string& interfaceName) const {
  // en0 and en1 are queried even if the interface is one of them.
  for (const std::string& name : {interfaceName, std::string("en0"), std::string("en1")}) {
    if (auto found = nameInAnswer(outputOf(networkSetup_, {"-getairportnetwork", name}))) return found;
  }
  return nameInReport(outputOf(airport_, {"-I"}));
}

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
