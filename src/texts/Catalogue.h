#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>

namespace kestrune {

// The user-visible texts by key, in one language. The key is the English text; where that names things of
// another desktop, the catalogue has the words that fit this one.
class Catalogue {
 public:
  // "en" or "es"; what a language lacks is shown in English.
  explicit Catalogue(std::string_view language = "en");

  // The text for the key, or the key itself where the catalogue doesn't know it.
  std::string_view text(std::string_view key) const;

 private:
  std::map<std::string, std::string, std::less<>> texts_;
};

}  // namespace kestrune
