#pragma once

#include "settings/Preferences.h"

namespace kestrune {

// Writes the default of every setting, one after the other; the keys stay. The sandbox hints, the language,
// the login item and the recorded history are left alone.
void resetAllSettings(Preferences& preferences);

}  // namespace kestrune
