#include "platform/linux/storage/MountInfo.h"

#include <charconv>
#include <cstddef>

#include "platform/linux/files/FieldScanner.h"

namespace kestrune::platform {
namespace {

// The byte that the escape at the start of `text` stands for, and the length of the escape.
std::optional<std::pair<char, std::size_t>> escape(std::string_view text) {
  if (!text.starts_with('\\')) return std::nullopt;
  const bool isHexadecimal = text.starts_with("\\x");
  const std::string_view digits = isHexadecimal ? text.substr(2, 2) : text.substr(1, 3);
  unsigned value = 0;
  const char* const end = digits.data() + digits.size();
  const auto [read, error] = std::from_chars(digits.data(), end, value, isHexadecimal ? 16 : 8);
  const bool isWhole = error == std::errc() && read == end && digits.size() == (isHexadecimal ? 2 : 3);
  if (!isWhole || value > 0xFF) return std::nullopt;
  return std::pair(static_cast<char>(value), std::size_t{4});
}

std::optional<Mount> parseMount(std::string_view line, std::string_view mountPoint) {
  FieldScanner fields(line);
  fields.field();  // id of the mount
  fields.field();  // id of its parent
  const std::string_view device = fields.field();
  fields.field();  // what of the file system is mounted
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
    const auto end = mountInfo.find('\n');
    if (auto mount = parseMount(mountInfo.substr(0, end), mountPoint)) found = std::move(mount);
    mountInfo.remove_prefix(end == std::string_view::npos ? mountInfo.size() : end + 1);
  }
  return found;
}

}  // namespace kestrune::platform
