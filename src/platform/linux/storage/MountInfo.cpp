#include "platform/linux/storage/MountInfo.h"

#include <cstddef>
#include <cstdint>

#include "platform/linux/files/FieldScanner.h"
#include "platform/linux/files/Text.h"

namespace kestrune::platform {
namespace {

// The byte encoded by the escape at the start of `text`, and the length of the escape.
std::optional<std::pair<char, std::size_t>> escape(std::string_view text) {
  if (!text.starts_with('\\')) return std::nullopt;
  constexpr std::size_t length = 4;
  if (text.size() < length) return std::nullopt;
  const auto byte = text[1] == 'x' ? parseNumber<std::uint8_t>(text.substr(2, 2), 16)
                                   : parseNumber<std::uint8_t>(text.substr(1, 3), 8);
  if (!byte) return std::nullopt;
  return std::pair(static_cast<char>(*byte), length);
}

std::optional<Mount> parseMount(std::string_view line, std::string_view mountPoint) {
  FieldScanner fields(line);
  fields.field();  // id of the mount
  fields.field();  // id of its parent
  const std::string_view device = fields.field();
  fields.field();  // root of the mount
  if (unescaped(fields.field()) != mountPoint) return std::nullopt;
  fields.field();  // options
  while (!fields.atEnd()) {
    if (fields.field() != "-") continue;
    const std::string_view type = fields.field();
    const std::string_view source = fields.field();
    if (source.empty()) return std::nullopt;
    return Mount{.device = std::string(device), .type = unescaped(type), .source = unescaped(source)};
  }
  return std::nullopt;
}

}  // namespace

std::string unescaped(std::string_view text) {
  std::string result;
  result.reserve(text.size());
  while (!text.empty()) {
    if (const auto found = escape(text)) {
      result += found->first;
      text.remove_prefix(found->second);
    } else {
      result += text.front();
      text.remove_prefix(1);
    }
  }
  return result;
}

std::optional<Mount> findMount(std::string_view mountInfo, std::string_view mountPoint) {
  std::optional<Mount> found;
  while (!mountInfo.empty()) {
    if (auto mount = parseMount(takeLine(mountInfo), mountPoint)) found = std::move(mount);
  }
  return found;
}

}  // namespace kestrune::platform
