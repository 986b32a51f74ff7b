#pragma once

#include <string>

#include "platform/ProcessEnvironment.h"

namespace kestrune::linux_platform {

// The user's folder for data: XDG_DATA_HOME where that is an absolute path, else .local/share in the home
// folder; empty where there is none.
std::string defaultDataDirectory(platform::ProcessEnvironment& environment);

}  // namespace kestrune::linux_platform
