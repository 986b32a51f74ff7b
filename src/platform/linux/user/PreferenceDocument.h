#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/PreferenceStorage.h"

namespace kestrune::platform {

// Parses the preferences file: one JSON object with a member for each key. A number is an integer unless it
// is written with a fraction or an exponent, so 80.0 is a double. Members of other types are skipped. Absent:
// the text isn't such an object.
std::optional<PreferenceMap> parsePreferences(std::string_view text);

// The text with one value set and all other members unchanged. Absent: `text` isn't such an object, or
// `value` is NaN or infinite.
std::optional<std::string> withPreference(std::string_view text, const std::string& key,
                                          const PreferenceValue& value);

}  // namespace kestrune::platform
