#include <gtest/gtest.h>

#include "runtime/Utf8.h"

namespace kestrune {
namespace {

using std::string_view_literals::operator""sv;

TEST(RepairedUtf8, keepsValidText) {
  for (const auto text :
       {""sv, "kworker/0:1"sv, "\xC3\xA9t\xC3\xA9"sv, "\xE2\x82\xAC"sv, "\xF0\x9F\x90\xA6"sv,
        "\xED\x9F\xBF\xEE\x80\x80"sv, "\xF4\x8F\xBF\xBF"sv, "\xEF\xBF\xBD"sv}) {
    EXPECT_EQ(repairedUtf8(text), text);
  }
}

// One replacement for each maximal part of a sequence that is valid as far as it goes, as is usual.
TEST(RepairedUtf8, replacesEachInvalidSequenceOnce) {
  const std::string bad = "\xEF\xBF\xBD";
  struct Case {
    std::string_view bytes;
    std::string expected;
  };
  const Case cases[] = {
      {"name\0rest"sv, "name"},
      {"a\xFFz", "a" + bad + "z"},                  // no such byte
      {"\x80\xBF", bad + bad},                      // continuations of nothing
      {"\xC3", bad},                                // cut off
      {"\xF0\x9F\x90", bad},                        // cut off after three of four
      {"\xE2\x82z", bad + "z"},                     // what follows stays
      {"\xE2\xC3\xA9", bad + "\xC3\xA9"},           // a new character begins too early
      {"\xC0\x80", bad + bad},                      // overlong zero
      {"\xC1\xBF", bad + bad},                      // overlong
      {"\xE0\x9F\xBF", bad + bad + bad},            // overlong
      {"\xF0\x8F\xBF\xBF", bad + bad + bad + bad},  // overlong
      {"\xED\xA0\x80", bad + bad + bad},            // a surrogate
      {"\xF4\x90\x80\x80", bad + bad + bad + bad},  // past the last character
  };
  for (const Case& each : cases)
    EXPECT_EQ(repairedUtf8(each.bytes), each.expected) << "case " << &each - &cases[0];
}

}  // namespace
}  // namespace kestrune
