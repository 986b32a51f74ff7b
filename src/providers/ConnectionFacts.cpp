#include "providers/ConnectionFacts.h"

#include <algorithm>
#include <map>
#include <string_view>
#include <utility>

#include "providers/InterfaceNames.h"
#include "runtime/Utf8.h"

namespace kestrune {
namespace {

using platform::InterfaceList;
using platform::InterfaceNaming;
using platform::LinkCounters;
using platform::LocationAuthorization;

constexpr const char* networkSetupTool = "/usr/sbin/networksetup";
constexpr const char* airportTool =
    "/System/Library/PrivateFrameworks/Apple80211.framework/Versions/Current/Resources/airport";
constexpr std::string_view networkMarker = "Current Wi-Fi Network:";
constexpr std::string_view nameMarker = "SSID: ";
constexpr std::string_view blanks = " \t\n\v\f\r";

constexpr const char* wifiKind = "Wi-Fi";
constexpr const char* ethernetKind = "Ethernet";
constexpr const char* vpnKind = "VPN";

std::string_view trimmed(std::string_view text) {
  const auto first = text.find_first_not_of(blanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

std::optional<std::string> unlessEmpty(std::string_view text) {
  return text.empty() ? std::nullopt : std::optional<std::string>(text);
}

std::optional<std::string> runTool(platform::ToolRunner& tools, const char* tool,
                                   const std::vector<std::string>& arguments) {
  auto output = tools.run(tool, arguments);
  const bool isText = output && repairedUtf8(*output) == *output;
  return isText ? std::move(output) : std::nullopt;
}

std::optional<std::string> askNetworkSetup(platform::ToolRunner& tools, const std::string& interfaceName) {
  const auto output = runTool(tools, networkSetupTool, {"-getairportnetwork", interfaceName});
  return output ? networkNameIn(*output) : std::nullopt;
}

std::optional<std::string> askAirport(platform::ToolRunner& tools) {
  if (!tools.isExecutableFile(airportTool)) return std::nullopt;
  const auto output = runTool(tools, airportTool, {"-I"});
  return output ? networkNameInRadioReport(*output) : std::nullopt;
}

// The first that gives a name. The last two interfaces are asked for also if the first was one of them.
std::optional<std::string> askTools(platform::ToolRunner& tools, const std::string& wifiName) {
  for (const std::string& interfaceName : {wifiName, std::string("en0"), std::string("en1")}) {
    if (auto name = askNetworkSetup(tools, interfaceName)) return name;
  }
  return askAirport(tools);
}

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

std::optional<std::string> networkNameIn(const std::string& output) {
  const auto marker = output.find(networkMarker);
  if (marker == std::string::npos) return std::nullopt;
  return unlessEmpty(trimmed(std::string_view(output).substr(marker + networkMarker.size())));
}

std::optional<std::string> networkNameInRadioReport(const std::string& output) {
  std::string_view rest = output;
  while (!rest.empty()) {
    const auto end = rest.find('\n');
    const std::string_view line = trimmed(rest.substr(0, end));
    if (line.starts_with(nameMarker)) return unlessEmpty(trimmed(line.substr(nameMarker.size())));
    if (end == std::string_view::npos) break;
    rest.remove_prefix(end + 1);
  }
  return std::nullopt;
}

ConnectionFacts findConnectionFacts(const ConnectionQuestion& question,
                                    platform::NetworkInterfaces& interfaces, platform::ToolRunner& tools) {
  const InterfaceNaming& naming = interfaces.naming();
  ConnectionFacts facts;
  std::optional<std::string> connecting;
  if (question.stationMode) {
    facts.label = wifiKind;
    facts.ssid = question.wifiSSID ? question.wifiSSID : askTools(tools, question.wifiName);
    facts.needsLocation = !facts.ssid && lacksPermission(question.authStatus);
    connecting = question.wifiName;
  }
  // After the tools, which may have taken their time.
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
