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

// The root of the running system; owns every long-lived object. Creating it starts the sampling. The program
// has one for its whole life; in a test, destroying it cancels the loops. Main thread only.
class AppEnvironment {
 public:
  // What the alerts need from the rest of the program.
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

  // The day that the dashboards show; absent means live. Never today or later.
  Published<std::optional<Date>> selectedDate;

  // True if the day before the selected one (or before today) has a file.
  bool canGoBack() const;
  Date startOfDay(Date date) const;
  // The start of the day `days` from today; absent if out of the calendar's range.
  std::optional<Date> startOfDay(int days) const;
  bool isYesterday(Date date) const;
  // The local time of day, in seconds after 0:00.
  int secondOfDay(Date date) const;
  // How long the machine has been running.
  SystemUptime uptime() const;

  // Moves the selected day by `days`; from today on, selects none (live).
  void shiftSelectedDate(int days);

 private:
  // Shares one walk of the process table between the providers that list processes.
  AppEnvironment(MainLoop& loop, const platform::Platform& platform, const Surroundings& surroundings,
                 const std::shared_ptr<ProcessScanCache>& scans);

  Date today() const;

  const Clock& clock_;
  platform::Calendar& calendar_;
  platform::SystemFacts& facts_;
};

}  // namespace kestrune
