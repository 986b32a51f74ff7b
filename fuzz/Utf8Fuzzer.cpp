#include "Fuzzer.h"
#include "runtime/Utf8.h"

using namespace kestrune;

namespace {

// Decodes by arithmetic, unlike the repair, which uses ranges of bytes.
bool isValidUtf8(std::string_view text) {
  while (!text.empty()) {
    const auto byte = [&](std::size_t i) { return static_cast<std::uint8_t>(text[i]); };
    const std::size_t length = byte(0) < 0x80 ? 1 : byte(0) >> 5U == 6 ? 2 : byte(0) >> 4U == 14 ? 3 : 4;
    if (length == 4 && byte(0) >> 3U != 30) return false;
    if (text.size() < length) return false;
    std::uint32_t code = length == 1 ? byte(0) : byte(0) & (0x7FU >> length);
    for (std::size_t i = 1; i < length; ++i) {
      if (byte(i) >> 6U != 2) return false;
      code = code << 6U | (byte(i) & 0x3FU);
    }
    constexpr std::uint32_t min[] = {0, 0, 0x80, 0x800, 0x10000};
    if (code < min[length] || code > 0x10FFFF || (code >= 0xD800 && code <= 0xDFFF)) return false;
    text.remove_prefix(length);
  }
  return true;
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string bytes = fuzz::textOf(data, size);
  const std::string text = repairedUtf8(bytes);
  const std::string untilZero = bytes.substr(0, bytes.find('\0'));
  fuzz::require(isValidUtf8(text));
  fuzz::require(text.find('\0') == std::string::npos);
  fuzz::require(repairedUtf8(text) == text);
  fuzz::require((text == untilZero) == isValidUtf8(untilZero));
  return 0;
}
