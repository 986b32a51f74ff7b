#pragma once

#include <memory>
#include <string>

#include "platform/Platform.h"
#include "platform/linux/JsonPreferenceStorage.h"
#include "platform/linux/LinuxApplications.h"
#include "platform/linux/LinuxAudioService.h"
#include "platform/linux/LinuxBlockStorage.h"
#include "platform/linux/LinuxCalendar.h"
#include "platform/linux/LinuxChip.h"
#include "platform/linux/LinuxClock.h"
#include "platform/linux/LinuxDayFiles.h"
#include "platform/linux/LinuxFolders.h"
#include "platform/linux/LinuxLocationPermission.h"
#include "platform/linux/LinuxLoginItem.h"
#include "platform/linux/LinuxMemory.h"
#include "platform/linux/LinuxNetworkInterfaces.h"
#include "platform/linux/LinuxPowerSources.h"
#include "platform/linux/LinuxProcessEnvironment.h"
#include "platform/linux/LinuxProcessTable.h"
#include "platform/linux/LinuxProcessors.h"
#include "platform/linux/LinuxSystemFacts.h"
#include "platform/linux/LinuxToolRunner.h"
#include "platform/linux/LinuxVolumes.h"
#include "platform/linux/LinuxWiFi.h"
#include "platform/linux/LoopDescriptor.h"

namespace kestrune::linux_platform {

// This computer. It outlives all that uses it.
class LinuxPlatform {
 public:
  LinuxPlatform();
  // Reads below `root`, and keeps preferences in kestrune/preferences.json below `configDirectory` and day
  // files in Kestrune/history below `dataDirectory`, or nowhere where these are empty.
  LinuxPlatform(const std::string& root, const std::string& configDirectory,
                const std::string& dataDirectory);
  LinuxPlatform(const LinuxPlatform&) = delete;
  LinuxPlatform& operator=(const LinuxPlatform&) = delete;

  // What belongs to the desktop comes from elsewhere. `dayFiles` takes the place of the files on the disk.
  platform::Platform platform(platform::UserNotifications& notifications, platform::Workspace& workspace,
                              platform::DayFileStorage* dayFiles = nullptr);
  // What the main loop is to be made with.
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
  LinuxToolRunner tools_;
  LinuxAudioService audio_;
  LinuxApplications applications_;
  LinuxFolders folders_;
  LinuxSystemFacts facts_;
  LinuxLoginItem loginItem_;
  LinuxDayFiles dayFiles_;
  // Last, so that they end before what their work uses.
  std::shared_ptr<ThreadLane> processLane_;
  std::shared_ptr<ThreadLane> connectionLane_;
  std::shared_ptr<ThreadLane> audioLane_;
  std::shared_ptr<ThreadLane> folderLane_;
};

}  // namespace kestrune::linux_platform
