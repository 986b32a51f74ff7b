#pragma once

#include <nlohmann/json.hpp>

#include "app/AppEnvironment.h"

namespace kestrune::tools {

// What every provider shows now, by the names of the fields in the code. Absent figures are null.
nlohmann::ordered_json snapshotJson(const AppEnvironment& environment);

}  // namespace kestrune::tools
