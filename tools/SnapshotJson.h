#pragma once

#include <nlohmann/json.hpp>

#include "app/AppEnvironment.h"

namespace kestrune::tools {

// The current snapshot of every provider, with the field names of the code. Absent figures are null.
nlohmann::ordered_json snapshotJson(const AppEnvironment& environment);

}  // namespace kestrune::tools
