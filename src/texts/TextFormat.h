#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace kestrune {

using TextArgument = std::variant<std::string, std::int64_t, double>;

// A user-visible format with its arguments put in: "%@" a text, "%d" an integer, "%.1f" a number with so many
// digits after a point, "%%" a percent sign. A translation may put them into another order: "%2$@". Formats
// are data, so that no mistake in one can do harm: what can't be read, or has no argument, stands as it is,
// and an argument of another kind than the format says is written all the same.
std::string formatText(std::string_view format, const std::vector<TextArgument>& arguments);

}  // namespace kestrune
