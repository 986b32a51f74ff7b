#include "runtime/Utf8.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace kestrune {
namespace {

constexpr std::string_view replacement = "\xEF\xBF\xBD";

struct Lead {
  std::size_t length = 0;  // of the whole sequence; 0 where no sequence starts so
  std::uint8_t secondMin = 0x80;
  std::uint8_t secondMax = 0xBF;
};

// The range of the second byte excludes overlong forms, surrogates and code points above U+10FFFF.
Lead lead(std::uint8_t byte) {
  if (byte < 0x80) return {1};
  if (byte >= 0xC2 && byte <= 0xDF) return {2};
  if (byte == 0xE0) return {3, 0xA0, 0xBF};
  if (byte == 0xED) return {3, 0x80, 0x9F};
  if (byte >= 0xE1 && byte <= 0xEF) return {3};
  if (byte == 0xF0) return {4, 0x90, 0xBF};
  if (byte >= 0xF1 && byte <= 0xF3) return {4};
  if (byte == 0xF4) return {4, 0x80, 0x8F};
  return {};
}

// How many bytes at the start of `bytes` are valid as far as they go, and whether they make a character.
struct Prefix {
  std::size_t length = 1;
  bool complete = false;
};

Prefix prefix(std::string_view bytes) {
  const auto at = [&](std::size_t i) { return static_cast<std::uint8_t>(bytes[i]); };
  const Lead first = lead(at(0));
  if (first.length == 0) return {};
  for (std::size_t i = 1; i < first.length; ++i) {
    const std::uint8_t min = i == 1 ? first.secondMin : 0x80;
    const std::uint8_t max = i == 1 ? first.secondMax : 0xBF;
    if (i >= bytes.size() || at(i) < min || at(i) > max) return {i, false};
  }
  return {first.length, true};
}

}  // namespace

std::string repairedUtf8(std::string_view bytes) {
  bytes = bytes.substr(0, bytes.find('\0'));
  const auto isAscii = [](char c) { return static_cast<std::uint8_t>(c) < 0x80; };
  if (std::ranges::all_of(bytes, isAscii)) return std::string(bytes);

  std::string text;
  text.reserve(bytes.size());
  while (!bytes.empty()) {
    const Prefix next = prefix(bytes);
    text += next.complete ? bytes.substr(0, next.length) : replacement;
    bytes.remove_prefix(next.length);
  }
  return text;
}

}  // namespace kestrune
