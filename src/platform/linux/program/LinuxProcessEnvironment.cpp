#include "platform/linux/program/LinuxProcessEnvironment.h"

#include <string_view>

#include <unistd.h>

#include "platform/linux/files/Files.h"

namespace kestrune::platform {
namespace {

std::string folder(ProcessEnvironment& environment, const char* variable, const char* belowHome) {
  const auto named = environment.variable(variable);
  if (named && named->starts_with('/')) return *named;
  const auto home = environment.variable("HOME");
  return home && home->starts_with('/') ? below(*home, belowHome) : std::string();
}

}  // namespace

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

std::string configDirectory(ProcessEnvironment& environment) {
  return folder(environment, "XDG_CONFIG_HOME", ".config");
}

std::string dataDirectory(ProcessEnvironment& environment) {
  return folder(environment, "XDG_DATA_HOME", ".local/share");
}

}  // namespace kestrune::platform
