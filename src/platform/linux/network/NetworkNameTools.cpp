#include "platform/linux/network/NetworkNameTools.h"

#include <string_view>
#include <vector>

#include "platform/linux/files/Files.h"
#include "platform/linux/files/Text.h"
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

}  // namespace

NetworkNameTools::NetworkNameTools(const std::string& root)
    : networkSetup_(installedTool(root, networkSetupTool)), airport_(installedTool(root, airportTool)) {}

std::optional<std::string> NetworkNameTools::find(const std::string& interfaceName) const {
  // The last two are asked for even if the interface is one of them.
  for (const std::string& name : {interfaceName, std::string("en0"), std::string("en1")}) {
    if (auto found = nameInAnswer(outputOf(networkSetup_, {"-getairportnetwork", name}))) return found;
  }
  return nameInReport(outputOf(airport_, {"-I"}));
}

}  // namespace kestrune::platform
