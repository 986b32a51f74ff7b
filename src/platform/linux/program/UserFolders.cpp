#include "platform/linux/program/UserFolders.h"

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

std::string configDirectory(ProcessEnvironment& environment) {
  return folder(environment, "XDG_CONFIG_HOME", ".config");
}

std::string dataDirectory(ProcessEnvironment& environment) {
  return folder(environment, "XDG_DATA_HOME", ".local/share");
}

}  // namespace kestrune::platform
