#pragma once

#include <string>
#include <string_view>

namespace kestrune {

// The user-visible texts by key. The key is the English text; where that names things of another desktop, the
// catalogue has the words that fit this one.
class Catalogue {
 public:
  // The text for the key, or the key itself where the catalogue has no other.
  std::string_view text(std::string_view key) const;
};

}  // namespace kestrune
