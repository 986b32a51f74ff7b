#include "platform/linux/applications/UserLanguages.h"

#include <algorithm>
#include <iterator>

#include "platform/linux/applications/DesktopEntry.h"
#include "platform/linux/files/Text.h"

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
  for (std::string_view rest = languages; !rest.empty();) {
    std::ranges::copy(localeNames(takePart(rest, ':')), std::back_inserter(all));
  }
  std::ranges::copy(names, std::back_inserter(all));
  return all;
}

}  // namespace kestrune::platform
