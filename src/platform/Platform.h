#pragma once

#include <memory>

#include "platform/Applications.h"
#include "platform/AudioService.h"
#include "platform/BlockStorage.h"
#include "platform/Calendar.h"
#include "platform/Chip.h"
#include "platform/Folders.h"
#include "platform/HistoryFolder.h"
#include "platform/LocationPermission.h"
#include "platform/LoginItem.h"
#include "platform/Memory.h"
#include "platform/NetworkInterfaces.h"
#include "platform/PowerSources.h"
#include "platform/PreferenceStorage.h"
#include "platform/ProcessEnvironment.h"
#include "platform/ProcessTable.h"
#include "platform/Processors.h"
#include "platform/SystemFacts.h"
#include "platform/UserNotifications.h"
#include "platform/Volumes.h"
#include "platform/WiFi.h"
#include "platform/Workspace.h"
#include "runtime/Clock.h"
#include "runtime/WorkLane.h"

namespace kestrune::platform {

// Everything that the logic asks of a computer, created once at start and handed down. Outlives its users.
struct Platform {
  Clock& clock;
  Calendar& calendar;
  ProcessEnvironment& environment;
  PreferenceStorage& preferences;
  Processors& processors;
  Chip& chip;
  // Shared with the lane that walks it.
  std::shared_ptr<ProcessTable> processTable;
  // Walks the process table on one thread of low priority.
  std::shared_ptr<WorkLane> processLane;
  Memory& memory;
  PowerSources& powerSources;
  BlockStorage& blockStorage;
  Volumes& volumes;
  NetworkInterfaces& networkInterfaces;
  WiFi& wifi;
  LocationPermission& location;
  // Examines the connection, which may hang in a search for the network name.
  std::shared_ptr<WorkLane> connectionLane;
  AudioService& audio;
  Applications& applications;
  // Reads the sound service, which may have to be waited for.
  std::shared_ptr<WorkLane> audioLane;
  Folders& folders;
  // Lists directories, which may hang with the device.
  std::shared_ptr<WorkLane> folderLane;
  SystemFacts& facts;
  LoginItem& loginItem;
  HistoryFolder& historyFolder;
  UserNotifications& notifications;
  Workspace& workspace;
};

}  // namespace kestrune::platform
