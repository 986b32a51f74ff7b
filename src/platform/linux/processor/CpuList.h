#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace kestrune::platform {

// A kernel list of processors such as "0-5,8,10-11" as ascending ids, each once. An empty list is empty.
// Absent: the text is no such list, or names an id that no kernel can have.
std::optional<std::vector<std::int32_t>> parseCpuList(std::string_view text);

}  // namespace kestrune::platform
