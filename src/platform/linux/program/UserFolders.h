#pragma once

#include <string>

#include "platform/ProcessEnvironment.h"

namespace kestrune::platform {

// The user's folders for settings and for data: XDG_CONFIG_HOME and XDG_DATA_HOME if they are absolute paths,
// else .config and .local/share in the home folder. Empty if there is no home folder either.
std::string configDirectory(ProcessEnvironment& environment);
std::string dataDirectory(ProcessEnvironment& environment);

}  // namespace kestrune::platform
