#pragma once

#include "settings/Preferences.h"

namespace kestrune {

// Writes the default of each setting in `settings::reset`, in that order; no key is removed. The sandbox
// hints, the language, the login item and the recorded history are left alone.
void resetAllSettings(Preferences& preferences);

}  // namespace kestrune
