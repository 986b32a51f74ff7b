#include "platform/linux/files/Text.h"

namespace kestrune::platform {

std::string_view trimmed(std::string_view text) {
  constexpr std::string_view blanks = " \t\n\v\f\r";
  const auto first = text.find_first_not_of(blanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

std::string_view takePart(std::string_view& text, char separator) {
  const auto end = text.find(separator);
  const std::string_view part = text.substr(0, end);
  text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
  return part;
}

std::string_view wholeLines(std::string_view text) {
  return text.substr(0, text.rfind('\n') + 1);  // npos + 1 is 0
}

std::string_view lineAfter(std::string_view text, std::string_view key) {
  while (!text.empty()) {
    const std::string_view line = takeLine(text);
    if (line.starts_with(key)) return line.substr(key.size());
  }
  return {};
}

}  // namespace kestrune::platform
