#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/PreferenceStorage.h"

namespace kestrune::platform {

// The preferences file's text: one JSON object with a member for each key. Numbers without a fraction are
// integers, 80.0 is a double. Members of other kinds are passed over. Absent: the text is no such thing.
std::optional<PreferenceMap> parsePreferences(std::string_view text);

// The text with one value set and all other members as they were. Absent: `text` is no such document, or
// `value` is a number that JSON has no form for.
std::optional<std::string> withPreference(std::string_view text, const std::string& key,
                                          const PreferenceValue& value);

}  // namespace kestrune::platform
