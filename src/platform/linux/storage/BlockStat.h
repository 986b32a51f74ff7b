#pragma once

#include <string_view>

#include "platform/BlockStorage.h"

namespace kestrune::platform {

// The counters in the text of a drive's `stat` file, whose sectors have 512 bytes whatever the drive's own
// size. Absent, each for itself: the field is missing or no plausible count.
BlockDriver parseBlockStat(std::string_view text);

}  // namespace kestrune::platform
