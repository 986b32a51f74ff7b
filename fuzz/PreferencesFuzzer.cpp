#include "Fuzzer.h"
#include "platform/linux/user/PreferenceDocument.h"

using namespace kestrune;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text = fuzz::textOf(data, size);
  const auto preferences = platform::parsePreferences(text);
  const auto changed = platform::withPreference(text, "fuzz.key", 80.0);
  fuzz::require(preferences.has_value() == changed.has_value());
  if (!preferences || !changed) return 0;

  // After writing and reading, values of all other kinds are unchanged.
  auto expected = *preferences;
  expected.insert_or_assign("fuzz.key", 80.0);
  fuzz::require(platform::parsePreferences(*changed) == expected);
  fuzz::require(platform::withPreference(*changed, "fuzz.key", 80.0) == changed);
  return 0;
}
