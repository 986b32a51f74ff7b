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

// Checks the user's rules against the providers' figures every 5 seconds and notifies the user when a rule
// fires. The state of the rules is lost when the process ends. Main thread only.
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

  // The alerts that can be shown as a sample.
  enum class Sample : std::uint8_t { cpu, memory, disk, network };

  // Doesn't ask for authorization yet. Loop and services must outlive the monitor.
  AlertsMonitor(MainLoop& loop, const Services& services);
  // Stops evaluating.
  ~AlertsMonitor();
  AlertsMonitor(const AlertsMonitor&) = delete;
  AlertsMonitor& operator=(const AlertsMonitor&) = delete;

  // Evaluates the rules every 5 s, first in 5 s. The sources are only read, and kept alive meanwhile. While
  // alerts are off or not allowed the rules are suspended and keep their state.
  void start(std::shared_ptr<const CPUProvider> cpu, std::shared_ptr<const MemoryProvider> memory,
             std::shared_ptr<const DiskProvider> disk, std::shared_ptr<const HistoryRecorder> recorder);

  // Asks whether the user allows notifications. The answer arrives later.
  void refreshAuthorization();
  // Asks the user to allow notifications, then refreshes the authorization.
  void requestAuthorization();
  void openNotificationSettings();

  // Shows an alert with made-up figures, regardless of the settings.
  void sendTest(Sample kind);

  // As of the last answer. Rules are evaluated only while it is authorized or provisional.
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
  void checkCPU(const CPUSnapshot& cpu, ContinuousTime now);
  void checkTotal(double usagePercent, ContinuousTime now);
  void checkCores(const std::vector<double>& usages, ContinuousTime now);
  void checkMemory(const MemorySnapshot& memory);
  void checkDisk(const DiskSnapshot& disk, ContinuousTime now);
  void checkNetwork(const DailySummary& day);
  void deliver(const platform::UserNotification& alert);

  MainLoop& loop_;
  Services services_;
  AlertSettings settings_;
  AlertTexts texts_;
  Task task_;
  // Spans are measured on the continuous clock, so that a step of the wall clock neither delays an alert nor
  // fires one. Both count from the last alert once one has fired.
  std::optional<ContinuousTime> cpuHighSince_;
  std::optional<ContinuousTime> corePinnedSince_;
  MemorySnapshot::MemoryPressure lastMemoryPressure_ = MemorySnapshot::MemoryPressure::nominal;
  std::optional<ContinuousTime> diskAlertedAt_;  // absent once the disk has recovered
  Date networkAlertFiredDay_ = Date::distantPast;
  std::int64_t networkAlertFiredGB_ = 0;  // the limit of the last alert on that day
};

}  // namespace kestrune
