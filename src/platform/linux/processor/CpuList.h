#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace kestrune::platform {

// The ids in a kernel list of processors such as "0-5,8,10-11", ascending, each once. An empty text is an
// empty list. Absent: the text isn't such a list, or contains an id that is too large for any kernel.
std::optional<std::vector<std::int32_t>> parseCpuList(std::string_view text);

}  // namespace kestrune::platform
