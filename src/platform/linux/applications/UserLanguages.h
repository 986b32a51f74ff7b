#pragma once

#include <string>
#include <vector>

#include "platform/ProcessEnvironment.h"

namespace kestrune::platform {

// The user's languages from the environment, best first, each followed by its more general names: "es_MX",
// "es". Empty if the environment names none.
std::vector<std::string> userLanguages(ProcessEnvironment& environment);

}  // namespace kestrune::platform
