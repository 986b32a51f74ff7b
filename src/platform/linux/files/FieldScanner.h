#pragma once

#include <algorithm>
#include <concepts>
#include <optional>
#include <string_view>

#include "platform/linux/files/Text.h"

namespace kestrune::platform {

// Splits a line into the fields between its blanks, from left to right.
class FieldScanner {
 public:
  explicit FieldScanner(std::string_view text) : rest_(text) {}

  void skipBlanks() { rest_.remove_prefix(std::min(rest_.find_first_not_of(' '), rest_.size())); }

  // Empty at the end of the line.
  std::string_view field() {
    skipBlanks();
    const std::string_view taken = rest_.substr(0, rest_.find(' '));
    rest_.remove_prefix(taken.size());
    return taken;
  }

  // The field as a number. Absent: it isn't a number, or doesn't fit.
  template <std::integral T>
  std::optional<T> number() {
    return parseNumber<T>(field());
  }

  bool atEnd() {
    skipBlanks();
    return rest_.empty();
  }
  std::string_view rest() const { return rest_; }

 private:
  std::string_view rest_;
};

}  // namespace kestrune::platform
