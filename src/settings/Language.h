#pragma once

#include <string>
#include <vector>

#include "platform/Application.h"
#include "runtime/MainLoop.h"
#include "settings/Preferences.h"

namespace kestrune {

// The language that the program speaks from its start on: "es" if the first of the user's languages begins
// so, else "en". The languages are those that were chosen in the program, or else the desktop's.
std::string currentLanguage(const Preferences& preferences, const std::vector<std::string>& desktopLanguages);

// Stores the choice and starts the program anew, which takes a second.
void setLanguage(const std::string& code, MainLoop& loop, Preferences& preferences,
                 platform::Application& application);

}  // namespace kestrune
