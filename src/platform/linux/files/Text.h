#pragma once

#include <charconv>
#include <concepts>
#include <optional>
#include <string_view>
#include <system_error>

namespace kestrune::platform {

// Without blanks and line ends at either end.
std::string_view trimmed(std::string_view text);

// Takes the part before the first separator off `text`, and the separator with it.
std::string_view takePart(std::string_view& text, char separator);

// Takes the first line off `text` and returns it without its line end, which the last line may lack.
inline std::string_view takeLine(std::string_view& text) {
  return takePart(text, '\n');
}

// The text up to and including its last line end. The kernel ends every line, so what follows may have lost
// digits.
std::string_view wholeLines(std::string_view text);

// The rest of the first line that begins with `key`; empty if no line does.
std::string_view lineAfter(std::string_view text, std::string_view key);

// All of `text` as a number. Absent: it isn't a number, or doesn't fit.
template <std::integral T>
std::optional<T> parseNumber(std::string_view text, int base = 10) {
  T value{};
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value, base);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return value;
}

// ASCII letters alone.
constexpr char lowerCase(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

}  // namespace kestrune::platform
