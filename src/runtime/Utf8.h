#pragma once

#include <string>
#include <string_view>

namespace kestrune {

// The bytes up to the first zero byte, as UTF-8 in which each invalid sequence is replaced by U+FFFD.
// What the kernel hands out as a name is bytes; everything above the platform layer is text.
std::string repairedUtf8(std::string_view bytes);

}  // namespace kestrune
