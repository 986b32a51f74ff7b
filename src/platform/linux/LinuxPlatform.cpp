#include "platform/linux/LinuxPlatform.h"

#include <filesystem>
#include <system_error>

#include "platform/linux/files/Files.h"
#include "platform/linux/processes/ProcessFiles.h"
#include "platform/linux/program/LinuxProcessEnvironment.h"
#include "platform/linux/program/ThreadPriority.h"

namespace kestrune::platform {
namespace {

// A search for the network name may hang; later ones use another thread.
constexpr std::size_t connectionThreads = 4;

// A listing may hang with a device; later ones use another thread.
constexpr std::size_t folderThreads = 16;

std::string preferencesFile(const std::string& configDirectory) {
  return configDirectory.empty() ? configDirectory : below(configDirectory, "kestrune/preferences.json");
}

std::string ownConfigDirectory() {
  LinuxProcessEnvironment environment;
  return configDirectory(environment);
}

// Where this program is installed; the name it was started by if the link can't be read.
std::string ownProgram() {
  std::error_code error;
  const auto path = std::filesystem::read_symlink("/proc/self/exe", error);
  return error ? std::string(program_invocation_name) : std::string(withoutDeleted(path.string()));
}

std::string ownDataDirectory() {
  LinuxProcessEnvironment environment;
  return dataDirectory(environment);
}

}  // namespace

LinuxPlatform::LinuxPlatform() : LinuxPlatform("/", ownConfigDirectory(), ownDataDirectory()) {}

LinuxPlatform::LinuxPlatform(const std::string& root, const std::string& configDirectory,
                             const std::string& dataDirectory)
    : processors_(root),
      chip_(root),
      processTable_(std::make_shared<LinuxProcessTable>(root)),
      preferences_(preferencesFile(configDirectory)),
      memory_(root),
      powerSources_(root),
      blockStorage_(root),
      volumes_(root),
      networkInterfaces_(root),
      wifi_(root),
      folders_(environment_, root),
      facts_(root, environment_),
      loginItem_(configDirectory, ownProgram()),
      historyFolder_(dataDirectory),
      processLane_(std::make_shared<ThreadLane>("kestrune-scan", slowDownThread)),
      connectionLane_(std::make_shared<ThreadLane>("kestrune-net", slowDownThread, connectionThreads)),
      audioLane_(std::make_shared<ThreadLane>("kestrune-audio", slowDownThread)),
      folderLane_(std::make_shared<ThreadLane>("kestrune-list", nameThread, folderThreads)) {}

Platform LinuxPlatform::platform(UserNotifications& notifications, Workspace& workspace,
                                 HistoryFolder* historyFolder) {
  return {.clock = clock_,
          .calendar = calendar_,
          .environment = environment_,
          .preferences = preferences_,
          .processors = processors_,
          .chip = chip_,
          .processTable = processTable_,
          .processLane = processLane_,
          .memory = memory_,
          .powerSources = powerSources_,
          .blockStorage = blockStorage_,
          .volumes = volumes_,
          .networkInterfaces = networkInterfaces_,
          .wifi = wifi_,
          .location = location_,
          .connectionLane = connectionLane_,
          .audio = audio_,
          .applications = applications_,
          .audioLane = audioLane_,
          .folders = folders_,
          .folderLane = folderLane_,
          .facts = facts_,
          .loginItem = loginItem_,
          .historyFolder = historyFolder != nullptr ? *historyFolder : historyFolder_,
          .notifications = notifications,
          .workspace = workspace};
}

}  // namespace kestrune::platform
