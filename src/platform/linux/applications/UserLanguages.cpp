#include "platform/linux/applications/UserLanguages.h"

#include <algorithm>
#include <iterator>

#include "platform/linux/applications/DesktopEntry.h"

namespace kestrune::platform {

std::vector<std::string> userLanguages(ProcessEnvironment& environment) {
  std::string locale;
  for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
    locale = environment.variable(name).value_or("");
    if (!locale.empty()) break;
  }
  std::vector<std::string> names = localeNames(locale);
  if (names.empty()) return names;
  // LANGUAGE lists languages that come before that of the locale.
  std::vector<std::string> all;
  const std::string languages = environment.variable("LANGUAGE").value_or("");
  for (std::size_t start = 0; start < languages.size();) {
    const auto end = std::min(languages.find(':', start), languages.size());
    std::ranges::copy(localeNames(std::string_view(languages).substr(start, end - start)),
                      std::back_inserter(all));
    start = end + 1;
  }
  std::ranges::copy(names, std::back_inserter(all));
  return all;
}

}  // namespace kestrune::platform
