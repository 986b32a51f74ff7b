#pragma once

#include <string>

#include "providers/AudioSnapshot.h"

// What the pages about audio share.
namespace kestrune::ui {

// The symbol of a device by its connection.
std::string transportSymbol(AudioSnapshot::Device::TransportKind transport);

// The key of the text that names the connection: "Built-in", "USB" and so on.
const char* transportLabel(AudioSnapshot::Device::TransportKind transport);

// The integer part of a volume in percent: "37%".
std::string volumeText(float volume);

}  // namespace kestrune::ui
