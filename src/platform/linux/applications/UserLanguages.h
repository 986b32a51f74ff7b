#pragma once

#include <string>
#include <vector>

#include "platform/ProcessEnvironment.h"

namespace kestrune::platform {

// The names of the languages that the user reads, the best first, each with its more general ones: "es_MX",
// "es". As the environment says; none where it names none.
std::vector<std::string> userLanguages(ProcessEnvironment& environment);

}  // namespace kestrune::platform
