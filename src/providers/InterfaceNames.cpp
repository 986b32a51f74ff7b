#include "providers/InterfaceNames.h"

#include <algorithm>
#include <array>

namespace kestrune {
namespace {

constexpr std::array<std::string_view, 7> uncounted = {"lo", "utun", "awdl", "llw", "bridge", "p2p", "ipsec"};
constexpr std::array<std::string_view, 5> leftOutOfTable = {"lo", "awdl", "llw", "bridge", "p2p"};
constexpr std::array<std::string_view, 1> wired = {"en"};
constexpr std::array<std::string_view, 2> vpn = {"utun", "ipsec"};

bool beginsWithAny(std::string_view name, const auto& beginnings) {
  return std::ranges::any_of(beginnings, [&](std::string_view text) { return name.starts_with(text); });
}

}  // namespace

bool isCounted(const platform::LinkEntry& link, const platform::InterfaceNaming& naming) {
  return !beginsWithAny(link.name, uncounted) && !beginsWithAny(link.name, naming.uncounted) &&
         !link.isCarriedByAnother;
}

bool isWiredName(std::string_view name, const platform::InterfaceNaming& naming) {
  return beginsWithAny(name, wired) || beginsWithAny(name, naming.wired);
}

bool isVpnName(std::string_view name, const platform::InterfaceNaming& naming) {
  return beginsWithAny(name, vpn) || beginsWithAny(name, naming.vpn);
}

bool isLeftOutOfTable(std::string_view name) {
  return beginsWithAny(name, leftOutOfTable);
}

}  // namespace kestrune
