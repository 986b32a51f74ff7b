#include "platform/linux/program/LinuxProcessEnvironment.h"

#include <string_view>

#include <unistd.h>

namespace kestrune::platform {

LinuxProcessEnvironment::LinuxProcessEnvironment() {
  if (environ == nullptr) return;
  for (char** entry = environ; *entry != nullptr; ++entry) {
    const std::string_view text(*entry);
    const auto equals = text.find('=');
    if (equals == std::string_view::npos) continue;
    // If a name is repeated, the first one counts, as for getenv.
    variables_.emplace(text.substr(0, equals), text.substr(equals + 1));
  }
}

std::optional<std::string> LinuxProcessEnvironment::variable(const std::string& name) {
  const auto found = variables_.find(name);
  return found == variables_.end() ? std::nullopt : std::optional(found->second);
}

}  // namespace kestrune::platform
