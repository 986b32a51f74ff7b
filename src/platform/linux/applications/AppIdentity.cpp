#include "platform/linux/applications/AppIdentity.h"

#include <cstddef>
#include <cstdint>
#include <ranges>
#include <utility>
#include <vector>

#include "platform/linux/files/Text.h"

namespace kestrune::platform {
namespace {

std::vector<std::string_view> parts(std::string_view text, char separator) {
  std::vector<std::string_view> result;
  while (true) {
    const auto end = text.find(separator);
    result.push_back(text.substr(0, end));
    if (end == std::string_view::npos) return result;
    text.remove_prefix(end + 1);
  }
}

bool removeSuffix(std::string_view& text, std::string_view suffix) {
  if (!text.ends_with(suffix)) return false;
  text.remove_suffix(suffix.size());
  return true;
}

// systemd escapes its special characters in unit names as \x and two digits.
std::string unescapedUnit(std::string_view name) {
  std::string result;
  while (!name.empty()) {
    const bool mayBeEscape = name.size() >= 4 && name.starts_with("\\x");
    const auto byte = mayBeEscape ? parseNumber<std::uint8_t>(name.substr(2, 2), 16) : std::nullopt;
    result += byte ? static_cast<char>(*byte) : name.front();
    name.remove_prefix(byte ? 4 : 1);
  }
  return result;
}

std::optional<AppUnit> unit(std::string_view id, AppUnit::Kind kind) {
  std::string name = unescapedUnit(id);
  if (name.ends_with(".desktop")) name.resize(name.size() - std::string_view(".desktop").size());
  if (name.empty()) return std::nullopt;
  return AppUnit{.id = std::move(name), .kind = kind};
}

AppUnit::Kind launchKind(const std::vector<std::string_view>& names) {
  return names.size() > 1 && names.front() == "flatpak" ? AppUnit::Kind::flatpak : AppUnit::Kind::launched;
}

// "app-LAUNCHER-ID-RANDOM.scope" or "app-LAUNCHER-ID@RANDOM.service"; the launcher is optional.
std::optional<AppUnit> launchedUnit(std::string_view name) {
  constexpr std::string_view prefix = "app-";
  if (!name.starts_with(prefix)) return std::nullopt;
  name.remove_prefix(prefix.size());
  const bool isScope = removeSuffix(name, ".scope");
  if (!isScope && !removeSuffix(name, ".service")) return std::nullopt;
  const bool hasInstance = !isScope && name.find('@') != std::string_view::npos;
  if (hasInstance) name = name.substr(0, name.find('@'));
  auto names = parts(name, '-');
  if (isScope) names.pop_back();
  if (names.empty() || names.size() > 2) return std::nullopt;
  return unit(names.back(), launchKind(names));
}

// "snap.NAME.APP-UUID.scope" or "snap.NAME.APP.service"; the desktop file is called NAME_APP.
std::optional<AppUnit> snapUnit(std::string_view name) {
  constexpr std::size_t uuidSize = 36;
  const bool isScope = removeSuffix(name, ".scope");
  if (!isScope && !removeSuffix(name, ".service")) return std::nullopt;
  if (isScope) {
    if (name.size() <= uuidSize || name[name.size() - uuidSize - 1] != '-') return std::nullopt;
    name.remove_suffix(uuidSize + 1);
  }
  const auto names = parts(name, '.');
  if (names.size() != 3 || names[0] != "snap") return std::nullopt;
  return unit(std::string(names[1]) + "_" + std::string(names[2]), AppUnit::Kind::snap);
}

// "dbus-:1.2-NAME@0.service"
std::optional<AppUnit> activatedUnit(std::string_view name) {
  if (!name.starts_with("dbus-:") || !removeSuffix(name, ".service")) return std::nullopt;
  const auto names = parts(name.substr(0, name.find('@')), '-');
  return names.size() == 3 ? unit(names[2], AppUnit::Kind::activated) : std::nullopt;
}

// The innermost unit on the path; units may have control groups of their own below them.
std::optional<AppUnit> unitOf(std::string_view path) {
  const auto names = parts(path, '/');
  for (const std::string_view name : std::views::reverse(names)) {
    if (!name.ends_with(".scope") && !name.ends_with(".service")) continue;
    if (auto found = launchedUnit(name)) return found;
    if (auto found = snapUnit(name)) return found;
    return activatedUnit(name);
  }
  return std::nullopt;
}

}  // namespace

std::optional<AppUnit> parseAppCgroup(std::string_view text) {
  while (!text.empty()) {
    const std::string_view line = takeLine(text);
    const auto nameStart = line.find(':');
    if (nameStart == std::string_view::npos) continue;
    const std::string_view rest = line.substr(nameStart + 1);
    // systemd's hierarchy: the unified one (cgroup v2), or its own among several (v1).
    for (const std::string_view hierarchy : {":", "name=systemd:"}) {
      if (!rest.starts_with(hierarchy)) continue;
      if (auto found = unitOf(rest.substr(hierarchy.size()))) return found;
    }
  }
  return std::nullopt;
}

std::string parseFlatpakId(std::string_view text) {
  bool isInGroup = false;
  while (!text.empty()) {
    const std::string_view line = takeLine(text);
    if (line.starts_with('[')) isInGroup = trimmed(line) == "[Application]";
    constexpr std::string_view key = "name=";
    if (isInGroup && line.starts_with(key)) return std::string(trimmed(line.substr(key.size())));
  }
  return {};
}

}  // namespace kestrune::platform
