#pragma once

#include <string_view>
#include <vector>

#include "platform/NetworkInterfaces.h"

namespace kestrune::platform {

// The interfaces in the text of /proc/net/dev, in its order. Truncated and invalid lines are left out. An
// interface with an implausible counter has no counters. `isCarriedByAnother` is always false, as the text
// doesn't have it.
std::vector<LinkEntry> parseNetDev(std::string_view text);

}  // namespace kestrune::platform
