#include "platform/linux/DataDirectory.h"

#include "platform/linux/Files.h"

namespace kestrune::linux_platform {

std::string defaultDataDirectory(platform::ProcessEnvironment& environment) {
  const auto data = environment.variable("XDG_DATA_HOME");
  if (data && data->starts_with('/')) return *data;
  const auto home = environment.variable("HOME");
  return home && home->starts_with('/') ? below(*home, ".local/share") : std::string();
}

}  // namespace kestrune::linux_platform
