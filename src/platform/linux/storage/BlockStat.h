#pragma once

#include <string_view>

#include "platform/BlockStorage.h"

namespace kestrune::platform {

// The counters of a drive's `stat` file, which always counts sectors of 512 bytes. A counter is absent if it
// is missing or implausible.
BlockDriver parseBlockStat(std::string_view text);

}  // namespace kestrune::platform
