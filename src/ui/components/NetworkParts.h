#pragma once

#include <cstdint>
#include <string>

#include "platform/Workspace.h"
#include "providers/NetworkProvider.h"
#include "ui/view/View.h"

// What the pages that show the network have in common.
namespace kestrune::ui {

// The symbol of the way in which the machine is connected.
std::string connectionSymbol(const NetworkSnapshot& network);

// The symbol of a network by its name; "Ethernet" stands among them like a name.
std::string networkSymbol(const std::string& name);

// Leads to the desktop's settings of the permission without which the Wi-Fi name is withheld. The workspace
// must outlive the view.
View allowLocationButton(platform::Workspace& workspace, double symbolSize);

// The integer part of a sum of bytes; 0 for what is negative or no number.
std::uint64_t wholeBytes(double bytes);

}  // namespace kestrune::ui
