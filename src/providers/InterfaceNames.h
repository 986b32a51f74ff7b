#pragma once

#include <string_view>

#include "platform/NetworkInterfaces.h"

namespace kestrune {

// What the name of an interface tells. The names that `naming` adds are those of the platform.

// Whether the bytes of the interface count towards the rates. Loopback, tunnels, bridges and the like don't:
// what goes through them goes through a physical port too, or never leaves the machine.
bool isCounted(const platform::LinkEntry& link, const platform::InterfaceNaming& naming);

bool isWiredName(std::string_view name, const platform::InterfaceNaming& naming);
bool isVpnName(std::string_view name, const platform::InterfaceNaming& naming);

// As what doesn't count, but VPNs are let in.
bool isLeftOutOfTable(std::string_view name);

}  // namespace kestrune
