#include "providers/ConnectionFacts.h"

#include <algorithm>
#include <map>

#include "providers/InterfaceNames.h"

namespace kestrune {
namespace {

using platform::InterfaceList;
using platform::InterfaceNaming;
using platform::LinkCounters;
using platform::LocationAuthorization;

constexpr const char* wifiKind = "Wi-Fi";
constexpr const char* ethernetKind = "Ethernet";
constexpr const char* vpnKind = "VPN";

bool lacksPermission(LocationAuthorization status) {
  return status == LocationAuthorization::notDetermined || status == LocationAuthorization::restricted ||
         status == LocationAuthorization::denied;
}

// The first address of the interface.
std::optional<std::string> addressOf(const InterfaceList& list, const std::string& interfaceName) {
  const auto found = std::ranges::find(list.addresses, interfaceName, &platform::AddressEntry::interfaceName);
  return found == list.addresses.end() ? std::nullopt : std::optional(found->address);
}

// A wired port counts as active once it has received a byte, even if its link is down now.
std::optional<std::string> activeWiredInterface(const InterfaceList& list, const InterfaceNaming& naming,
                                                const std::set<std::string>& wifiNames) {
  for (const auto& link : list.links) {
    if (isWiredName(link.name, naming) && !wifiNames.contains(link.name) && link.counters &&
        link.counters->received != 0) {
      return link.name;
    }
  }
  return std::nullopt;
}

std::optional<std::string> kindOf(const std::string& name, const InterfaceNaming& naming,
                                  const std::set<std::string>& wifiNames) {
  if (wifiNames.contains(name)) return wifiKind;
  if (isWiredName(name, naming)) return ethernetKind;
  if (isVpnName(name, naming)) return vpnKind;
  return std::nullopt;
}

// All interfaces of a known kind with any traffic, sorted by name, each with the last of its addresses.
std::vector<InterfaceInfo> interfaceTable(const InterfaceList& list, const InterfaceNaming& naming,
                                          const std::set<std::string>& wifiNames) {
  std::map<std::string, std::string> addresses;
  for (const auto& entry : list.addresses) {
    if (!isLeftOutOfTable(entry.interfaceName) && !entry.address.empty()) {
      addresses[entry.interfaceName] = entry.address;
    }
  }
  std::map<std::string, LinkCounters> counters;
  for (const auto& link : list.links) {
    if (!isLeftOutOfTable(link.name) && link.counters) counters[link.name] = *link.counters;
  }

  std::vector<InterfaceInfo> table;
  for (const auto& [name, bytes] : counters) {
    if (bytes.received == 0 && bytes.sent == 0) continue;
    const auto kind = kindOf(name, naming, wifiNames);
    if (!kind) continue;
    const auto address = addresses.find(name);
    table.push_back({.id = name,
                     .kind = *kind,
                     .ipAddress = address == addresses.end() ? std::nullopt : std::optional(address->second),
                     .totalSent = bytes.sent,
                     .totalRecv = bytes.received});
  }
  return table;
}

}  // namespace

ConnectionFacts findConnectionFacts(const ConnectionQuestion& question,
                                    platform::NetworkInterfaces& interfaces, platform::WiFi& wifi) {
  const InterfaceNaming& naming = interfaces.naming();
  ConnectionFacts facts;
  std::optional<std::string> connecting;
  if (question.stationMode) {
    facts.label = wifiKind;
    facts.ssid = question.wifiSSID ? question.wifiSSID : wifi.findNetworkName(question.wifiName);
    facts.needsLocation = !facts.ssid && lacksPermission(question.authStatus);
    connecting = question.wifiName;
  }
  // After the search for the name, which may have taken long.
  const InterfaceList list = interfaces.interfaces().value_or(InterfaceList{});
  if (!question.stationMode) {
    connecting = activeWiredInterface(list, naming, question.wifiNames);
    facts.label = connecting ? ethernetKind : "Not connected";
  }
  if (connecting) facts.ipAddress = addressOf(list, *connecting);
  facts.interfaces = interfaceTable(list, naming, question.wifiNames);
  return facts;
}

}  // namespace kestrune
