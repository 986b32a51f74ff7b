#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>

namespace kestrune {

// The user-visible texts by key, in one language. The key is the English text; where it names things of
// another desktop, the catalogue has a wording that fits this one.
class Catalogue {
 public:
  // "en" or "es". Texts missing in a language are shown in English.
  explicit Catalogue(std::string_view language = "en");

  // The text for the key, or the key itself if the catalogue doesn't have it.
  std::string_view text(std::string_view key) const;

 private:
  std::map<std::string, std::string, std::less<>> texts_;
};

}  // namespace kestrune
