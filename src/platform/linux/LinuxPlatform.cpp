#include "platform/linux/LinuxPlatform.h"

#include "platform/linux/Files.h"
#include "platform/linux/ThreadPriority.h"

namespace kestrune::linux_platform {
namespace {

std::string preferencesFile(const std::string& configDirectory) {
  return configDirectory.empty() ? configDirectory : below(configDirectory, "kestrune/preferences.json");
}

std::string ownConfigDirectory() {
  LinuxProcessEnvironment environment;
  return defaultConfigDirectory(environment);
}

}  // namespace

std::string defaultConfigDirectory(platform::ProcessEnvironment& environment) {
  const auto config = environment.variable("XDG_CONFIG_HOME");
  if (config && config->starts_with('/')) return *config;
  const auto home = environment.variable("HOME");
  return home && home->starts_with('/') ? below(*home, ".config") : std::string();
}

LinuxPlatform::LinuxPlatform() : LinuxPlatform("/", ownConfigDirectory()) {}

LinuxPlatform::LinuxPlatform(const std::string& root, const std::string& configDirectory)
    : processors_(root),
      chip_(root),
      processTable_(std::make_shared<LinuxProcessTable>(root)),
      preferences_(preferencesFile(configDirectory)),
      processLane_(std::make_shared<ThreadLane>("kestrune-scan", slowDownThread)) {}

platform::Platform LinuxPlatform::platform() {
  return {.clock = clock_,
          .calendar = calendar_,
          .environment = environment_,
          .preferences = preferences_,
          .processors = processors_,
          .chip = chip_,
          .processTable = processTable_,
          .processLane = processLane_};
}

}  // namespace kestrune::linux_platform
