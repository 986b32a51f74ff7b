#pragma once

#include <string>
#include <vector>

#include "platform/Application.h"
#include "runtime/MainLoop.h"
#include "settings/Preferences.h"

namespace kestrune {

// The program's language for the whole run: "es" if the first of the user's languages begins with it, else
// "en". The languages are those chosen in the program, otherwise the desktop's.
std::string currentLanguage(const Preferences& preferences, const std::vector<std::string>& desktopLanguages);

// Stores the choice and restarts the program after a second.
void setLanguage(const std::string& code, MainLoop& loop, Preferences& preferences,
                 platform::Application& application);

}  // namespace kestrune
