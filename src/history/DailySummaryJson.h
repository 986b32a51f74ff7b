#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "history/DailySummary.h"

namespace kestrune {

struct EncodedDay {
  std::string text;   // one compact line of JSON; empty on failure
  std::string error;  // a message; empty on success
};

// The content of a day file. Dates are seconds since 2001-01-01T00:00:00Z. Integers are exact; other numbers
// have the fewest digits that read back equal. Fails if a figure is NaN or infinite.
EncodedDay encodeDay(const DailySummary& summary);

// Absent if the text isn't JSON, lacks a key at any depth, or has a value of the wrong type or out of range.
// Unknown keys are ignored.
std::optional<DailySummary> decodeDay(std::string_view text);

}  // namespace kestrune
