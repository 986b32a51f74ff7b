#pragma once

#include <string>
#include <string_view>

namespace kestrune {

// The bytes up to the first NUL as UTF-8, with each invalid sequence replaced by U+FFFD. Names from the
// kernel are bytes; above the platform layer everything is text.
std::string repairedUtf8(std::string_view bytes);

}  // namespace kestrune
