#pragma once

#include <cstdint>
#include <string>

#include "platform/Workspace.h"
#include "providers/NetworkProvider.h"
#include "ui/view/View.h"

// What the pages about the network share.
namespace kestrune::ui {

// The symbol of the machine's connection.
std::string connectionSymbol(const NetworkSnapshot& network);

// The symbol of a network by its name, which may be "Ethernet".
std::string networkSymbol(const std::string& name);

// Leads to the desktop's settings of the permission without which the Wi-Fi name is withheld. The workspace
// must outlive the view.
View allowLocationButton(platform::Workspace& workspace, double symbolSize);

// Truncates a sum of bytes; 0 if it is negative or NaN.
std::uint64_t wholeBytes(double bytes);

}  // namespace kestrune::ui
