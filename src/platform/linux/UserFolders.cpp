#include "platform/linux/UserFolders.h"

#include "platform/linux/Files.h"

namespace kestrune::linux_platform {
namespace {

std::string folder(platform::ProcessEnvironment& environment, const char* variable, const char* belowHome) {
  const auto named = environment.variable(variable);
  if (named && named->starts_with('/')) return *named;
  const auto home = environment.variable("HOME");
  return home && home->starts_with('/') ? below(*home, belowHome) : std::string();
}

}  // namespace

std::string configDirectory(platform::ProcessEnvironment& environment) {
  return folder(environment, "XDG_CONFIG_HOME", ".config");
}

std::string dataDirectory(platform::ProcessEnvironment& environment) {
  return folder(environment, "XDG_DATA_HOME", ".local/share");
}

}  // namespace kestrune::linux_platform
