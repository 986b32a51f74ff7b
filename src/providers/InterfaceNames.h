#pragma once

#include <string_view>

#include "platform/NetworkInterfaces.h"

namespace kestrune {

// What the name of an interface reveals. `naming` adds the names that the platform uses.

// True if the interface's bytes count towards the rates. Loopback, tunnels and bridges don't count: their
// traffic also passes through a physical port, or never leaves the machine.
bool isCounted(const platform::LinkEntry& link, const platform::InterfaceNaming& naming);

bool isWiredName(std::string_view name, const platform::InterfaceNaming& naming);
bool isVpnName(std::string_view name, const platform::InterfaceNaming& naming);

// True for names that are left out of the table of interfaces: uncounted ones, except VPNs.
bool isLeftOutOfTable(std::string_view name);

}  // namespace kestrune
