#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "history/DailySummary.h"

namespace kestrune {

struct EncodedDay {
  std::string text;   // one compact line of JSON; empty where that failed
  std::string error;  // in words; empty where it went well
};

// The content of a day file. Instants are seconds since 2001-01-01T00:00:00Z, integers exact, other numbers
// as short as reads back equal. Fails where a figure is no finite number.
EncodedDay encodeDay(const DailySummary& summary);

// Absent: the text is no JSON, lacks a key at any depth, or has a value of the wrong kind or out of its
// range. Keys that nobody knows are ignored.
std::optional<DailySummary> decodeDay(std::string_view text);

}  // namespace kestrune
