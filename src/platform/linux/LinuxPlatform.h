#pragma once

#include <memory>
#include <string>

#include "platform/Platform.h"
#include "platform/linux/LinuxSystemFacts.h"
#include "platform/linux/applications/LinuxApplications.h"
#include "platform/linux/audio/LinuxAudioService.h"
#include "platform/linux/folders/LinuxFolders.h"
#include "platform/linux/memory/LinuxMemory.h"
#include "platform/linux/network/LinuxNetworkInterfaces.h"
#include "platform/linux/network/LinuxWiFi.h"
#include "platform/linux/power/LinuxPowerSources.h"
#include "platform/linux/processes/LinuxProcessTable.h"
#include "platform/linux/processor/LinuxChip.h"
#include "platform/linux/processor/LinuxProcessors.h"
#include "platform/linux/program/LinuxProcessEnvironment.h"
#include "platform/linux/program/LoopDescriptor.h"
#include "platform/linux/storage/LinuxBlockStorage.h"
#include "platform/linux/storage/LinuxVolumes.h"
#include "platform/linux/time/LinuxCalendar.h"
#include "platform/linux/time/LinuxClock.h"
#include "platform/linux/user/JsonPreferenceStorage.h"
#include "platform/linux/user/LinuxHistoryFolder.h"
#include "platform/linux/user/LinuxLoginItem.h"

namespace kestrune::platform {

// This computer. Must outlive its users.
class LinuxPlatform {
 public:
  LinuxPlatform();
  // Reads below `root`. Preferences are stored in kestrune/preferences.json below `configDirectory` and day
  // files in Kestrune/history below `dataDirectory`; nothing is stored if the directory is empty.
  LinuxPlatform(const std::string& root, const std::string& configDirectory,
                const std::string& dataDirectory);
  LinuxPlatform(const LinuxPlatform&) = delete;
  LinuxPlatform& operator=(const LinuxPlatform&) = delete;

  // The parts that belong to the desktop are supplied by the caller. `historyFolder` replaces the files on
  // the disk.
  Platform platform(UserNotifications& notifications, Workspace& workspace,
                    HistoryFolder* historyFolder = nullptr);
  // The waker for the main loop.
  LoopDescriptor& loopDescriptor() { return loopDescriptor_; }

 private:
  LinuxProcessEnvironment environment_;
  LinuxClock clock_;
  LinuxCalendar calendar_;
  LinuxProcessors processors_;
  LinuxChip chip_;
  std::shared_ptr<LinuxProcessTable> processTable_;
  JsonPreferenceStorage preferences_;
  LoopDescriptor loopDescriptor_;
  LinuxMemory memory_;
  LinuxPowerSources powerSources_;
  LinuxBlockStorage blockStorage_;
  LinuxVolumes volumes_;
  LinuxNetworkInterfaces networkInterfaces_;
  LinuxWiFi wifi_;
  LinuxLocationPermission location_;
  LinuxAudioService audio_;
  LinuxApplications applications_;
  LinuxFolders folders_;
  LinuxSystemFacts facts_;
  LinuxLoginItem loginItem_;
  LinuxHistoryFolder historyFolder_;
  // Last, so that they end before the members that their work uses.
  std::shared_ptr<ThreadLane> processLane_;
  std::shared_ptr<ThreadLane> connectionLane_;
  std::shared_ptr<ThreadLane> audioLane_;
  std::shared_ptr<ThreadLane> folderLane_;
};

}  // namespace kestrune::platform
