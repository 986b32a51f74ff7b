#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace kestrune {

using TextArgument = std::variant<std::string, std::int64_t, double>;

// Fills a user-visible format with its arguments: "%@" is a text, "%d" an integer, "%.1f" a number with that
// many decimals, "%%" a percent sign. A translation may reorder them: "%2$@". Formats are data, so a mistake
// in one must be harmless: a placeholder that is malformed or has no argument is left as it is, and an
// argument of another type is written in its own form. Numbers with decimals are written with `decimalMark`.
std::string formatText(std::string_view format, const std::vector<TextArgument>& arguments,
                       std::string_view decimalMark = ".");

}  // namespace kestrune
