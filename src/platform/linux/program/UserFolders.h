#pragma once

#include <string>

#include "platform/ProcessEnvironment.h"

namespace kestrune::platform {

// The user's folders for settings and for data: XDG_CONFIG_HOME and XDG_DATA_HOME where these are absolute
// paths, else .config and .local/share in the home folder; empty where there is none.
std::string configDirectory(ProcessEnvironment& environment);
std::string dataDirectory(ProcessEnvironment& environment);

}  // namespace kestrune::platform
