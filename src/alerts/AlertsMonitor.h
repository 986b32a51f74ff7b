#pragma once

#include <cstdint>
#include <memory>
#include <optional>

#include "alerts/AlertSettings.h"
#include "alerts/AlertTexts.h"
#include "history/HistoryRecorder.h"
#include "platform/Calendar.h"
#include "platform/UserNotifications.h"
#include "platform/Workspace.h"
#include "providers/CPUProvider.h"
#include "providers/DiskProvider.h"
#include "providers/MemoryProvider.h"
#include "runtime/Published.h"
#include "runtime/Task.h"

namespace kestrune {

// Compares what the providers publish with the rules that the user has set, every 5 seconds, and notifies the
// user where one fires. What the rules remember ends with the process. Main thread only.
class AlertsMonitor : public std::enable_shared_from_this<AlertsMonitor> {
 public:
  struct Services {
    Preferences& preferences;
    platform::UserNotifications& notifications;
    platform::Workspace& workspace;
    platform::Calendar& calendar;
    const Catalogue& texts;
    LocaleFormats& formats;
  };

  // The alerts that the user can have shown as a sample.
  enum class Sample : std::uint8_t { cpu, memory, disk, network };

  // Asks nothing yet. Loop and services must outlive the monitor.
  AlertsMonitor(MainLoop& loop, const Services& services);
  // Ends the evaluation.
  ~AlertsMonitor();
  AlertsMonitor(const AlertsMonitor&) = delete;
  AlertsMonitor& operator=(const AlertsMonitor&) = delete;

  // Evaluates the rules from now on, for the first time in 5 s. The sources are read only, and kept for as
  // long. Rules stand still, with what they remember, while alerts are off or not allowed.
  void start(std::shared_ptr<const CPUProvider> cpu, std::shared_ptr<const MemoryProvider> memory,
             std::shared_ptr<const DiskProvider> disk, std::shared_ptr<const HistoryRecorder> recorder);

  // Asks whether the user allows notifications. The answer comes later.
  void refreshAuthorization();
  // Asks the user to allow them, and then looks what has come of it.
  void requestAuthorization();
  void openNotificationSettings();

  // Shows one alert with made-up figures, whatever the settings say.
  void sendTest(Sample kind);

  // As last seen; rules are evaluated only while it is authorized or provisional.
  Published<platform::NotificationAuthorization> authorizationStatus{
      platform::NotificationAuthorization::notDetermined};

 private:
  struct Sources {
    std::shared_ptr<const CPUProvider> cpu;
    std::shared_ptr<const MemoryProvider> memory;
    std::shared_ptr<const DiskProvider> disk;
    std::shared_ptr<const HistoryRecorder> recorder;
  };
  static Task evaluateAgainAndAgain(MainLoop& loop, std::weak_ptr<AlertsMonitor> monitor, Sources sources);
  void evaluate(const Sources& sources);
  void checkCPU(const CPUSnapshot& cpu, Date now);
  void checkTotal(double usagePercent, Date now);
  void checkCores(const std::vector<double>& usages, Date now);
  void checkMemory(const MemorySnapshot& memory);
  void checkDisk(const DiskSnapshot& disk, Date now);
  void checkNetwork(const DailySummary& day, Date now);
  void deliver(const platform::UserNotification& alert);

  MainLoop& loop_;
  Services services_;
  AlertSettings settings_;
  AlertTexts texts_;
  Task task_;
  std::optional<Date> cpuHighSince_;     // or since the last alert
  std::optional<Date> corePinnedSince_;  // or since the last alert
  MemorySnapshot::MemoryPressure lastMemoryPressure_ = MemorySnapshot::MemoryPressure::nominal;
  std::optional<Date> diskAlertedAt_;  // absent once the disk has recovered
  Date networkAlertFiredDay_ = Date::distantPast;
  std::int64_t networkAlertFiredGB_ = 0;  // the limit of the last alert on that day
};

}  // namespace kestrune
