#include "platform/linux/user/PreferenceDocument.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include <nlohmann/json.hpp>

namespace kestrune::platform {
namespace {

using Json = nlohmann::json;

constexpr int maxDepth = 64;

// Writing a value takes stack for each level, so excessive nesting is rejected before parsing.
bool isTooDeep(std::string_view text) {
  int depth = 0;
  bool isInString = false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    if (isInString) {
      if (c == '\\') ++i;
      if (c == '"') isInString = false;
    } else if (c == '"') {
      isInString = true;
    } else if (c == '[' || c == '{') {
      if (++depth > maxDepth) return true;
    } else if (c == ']' || c == '}') {
      --depth;
    }
  }
  return false;
}

std::optional<Json> documentOf(std::string_view text) {
  if (isTooDeep(text)) return std::nullopt;
  Json document = Json::parse(text, nullptr, /*allow_exceptions=*/false);
  if (!document.is_object()) return std::nullopt;
  return document;
}

std::optional<PreferenceValue> textsOf(const Json& json) {
  if (!std::ranges::all_of(json, [](const Json& item) { return item.is_string(); })) return std::nullopt;
  return json.get<std::vector<std::string>>();
}

// Absent: a type that no preference has.
std::optional<PreferenceValue> valueOf(const Json& json) {
  if (json.is_boolean()) return json.get<bool>();
  if (json.is_number_float()) return json.get<double>();
  if (json.is_string()) return json.get<std::string>();
  if (json.is_array()) return textsOf(json);
  if (!json.is_number_integer()) return std::nullopt;
  constexpr std::uint64_t maxInteger = std::numeric_limits<std::int64_t>::max();
  if (json.is_number_unsigned() && json.get<std::uint64_t>() > maxInteger) return std::nullopt;
  return json.get<std::int64_t>();
}

}  // namespace

std::optional<PreferenceMap> parsePreferences(std::string_view text) {
  const auto document = documentOf(text);
  if (!document) return std::nullopt;
  PreferenceMap preferences;
  for (const auto& [key, json] : document->items()) {
    if (auto value = valueOf(json)) preferences.emplace(key, *std::move(value));
  }
  return preferences;
}

std::optional<std::string> withPreference(std::string_view text, const std::string& key,
                                          const PreferenceValue& value) {
  auto document = documentOf(text);
  const auto* number = std::get_if<double>(&value);
  if (!document || (number != nullptr && !std::isfinite(*number))) return std::nullopt;
  (*document)[key] = std::visit([](const auto& typed) { return Json(typed); }, value);
  return document->dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

}  // namespace kestrune::platform
