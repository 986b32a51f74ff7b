#pragma once

#include <string_view>
#include <vector>

#include "platform/NetworkInterfaces.h"

namespace kestrune::platform {

// The interfaces in the text of /proc/net/dev, in its order. Lines that were cut or make no sense are left
// out. An interface with a counter that is no plausible count has none. Where the bytes go on isn't told
// there: `isCarriedByAnother` is false.
std::vector<LinkEntry> parseNetDev(std::string_view text);

}  // namespace kestrune::platform
