#pragma once

#include <memory>
#include <optional>

#include "alerts/AlertsMonitor.h"
#include "folders/FolderProvider.h"
#include "history/DayFiles.h"
#include "history/HistoricalDataStore.h"
#include "history/HistoryRecorder.h"
#include "history/SystemUptime.h"
#include "platform/Platform.h"
#include "providers/AudioProvider.h"
#include "providers/BatteryProvider.h"
#include "providers/CPUProvider.h"
#include "providers/DiskProvider.h"
#include "providers/MemoryProvider.h"
#include "providers/NetworkProvider.h"
#include "runtime/MainLoop.h"
#include "runtime/Published.h"
#include "settings/Preferences.h"
#include "texts/Catalogue.h"
#include "texts/LocaleFormats.h"

namespace kestrune {

// The root of the running system: owns every long-lived object. Creating it starts the sampling. One exists
// for the life of the process; in a test its end cancels the loops. Main thread only.
class AppEnvironment {
 public:
  // What the alerts need of the program around them.
  struct Surroundings {
    Preferences& preferences;
    const Catalogue& texts;
    LocaleFormats& formats;
  };

  // Loop, platform and surroundings must outlive the environment.
  AppEnvironment(MainLoop& loop, const platform::Platform& platform, const Surroundings& surroundings);

  const std::shared_ptr<CPUProvider> cpu;
  const std::shared_ptr<MemoryProvider> memory;
  const std::shared_ptr<BatteryProvider> battery;
  const std::shared_ptr<DiskProvider> disk;
  const std::shared_ptr<NetworkProvider> network;
  const std::shared_ptr<FolderProvider> folders;
  const std::shared_ptr<AudioProvider> audio;
  DayFiles dayFiles;
  const std::shared_ptr<HistoryRecorder> recorder;
  HistoricalDataStore historyStore;
  const std::shared_ptr<AlertsMonitor> alerts;

  // The day that the dashboards look at; absent means today, live. Never today's date or a later one.
  Published<std::optional<Date>> selectedDate;

  // Whether the day before the selected one, or before today, has a file.
  bool canGoBack() const;
  Date startOfDay(Date date) const;
  // Of the day so many days from today; absent where the calendar ends.
  std::optional<Date> startOfDay(int days) const;
  bool isYesterday(Date date) const;
  // What the clock on the wall showed then, in seconds after 0:00.
  int secondOfDay(Date date) const;
  // How long the machine has been running.
  SystemUptime uptime() const;

  // Moves the selected day by so many calendar days. Today or later becomes absent.
  void shiftSelectedDate(int days);

 private:
  // The providers that list processes share one walk.
  AppEnvironment(MainLoop& loop, const platform::Platform& platform, const Surroundings& surroundings,
                 const std::shared_ptr<ProcessScanCache>& scans);

  Date today() const;

  const Clock& clock_;
  platform::Calendar& calendar_;
  platform::SystemFacts& facts_;
};

}  // namespace kestrune
