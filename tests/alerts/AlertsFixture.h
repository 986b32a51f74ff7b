#pragma once

#include <gmock/gmock.h>

#include "alerts/AlertsMonitor.h"
#include "support/Providers.h"

namespace kestrune::test {

// A monitor that has not been started yet, over sources whose figures the test sets; nothing is alarming at
// first.
class AlertsFixture : public testing::Test, public ScriptedPlatform {
 protected:
  using Pressure = MemorySnapshot::MemoryPressure;
  static constexpr std::uint64_t gigabyte = 1ULL << 30U;

  AlertsFixture() {
    setCPU(10);
    setPressure(Pressure::nominal);
    setDisk(100 * gigabyte, 50 * gigabyte);
  }

  void setCPU(double usage, std::vector<double> cores = {}) {
    sources.cpu->current.set({.usagePercent = usage, .coreUsages = std::move(cores)});
  }
  void setPressure(Pressure level, double usedGB = 12) {
    const auto used = static_cast<std::uint64_t>(usedGB * 0x1p30);
    sources.memory->current.set({.usedBytes = used, .totalBytes = 16 * gigabyte, .pressure = level});
  }
  void setDisk(std::uint64_t total, std::uint64_t used) {
    sources.disk->current.set(
        {.volumeTotalBytes = total, .volumeUsedBytes = used, .volumeFreeBytes = total - used});
  }
  // A day with this much traffic, up and down together, spread over three hours.
  void setTraffic(double gigabytes) {
    const double twelfth = gigabytes * 0x1p30 / 12;
    recorder->current.hours.assign(3, {.networkUpBytes = twelfth, .networkDownBytes = 3 * twelfth});
  }
  void set(const char* key, platform::PreferenceValue value) { settings.set(key, std::move(value)); }

  // Starts the monitor and authorizes it.
  void start() {
    monitor->refreshAuthorization();
    monitor->start(sources.cpu, sources.memory, sources.disk, recorder);
    settle();
  }
  void evaluate(int times = 1) { advance(times * std::chrono::seconds(5)); }

  // The identifiers of what was delivered since the last call.
  std::vector<std::string> fired() {
    std::vector<std::string> identifiers;
    for (const auto& alert : std::exchange(notifications.deliveries, {})) {
      identifiers.push_back(alert.identifier);
      last = alert;
    }
    return identifiers;
  }
  std::vector<std::string> firedAfter(int evaluations = 1) {
    evaluate(evaluations);
    return fired();
  }
  // How many evaluations until an alert fires; 0 if none does within twenty minutes.
  int evaluationsUntilItFires() {
    fired();
    for (int count = 1; count <= 240; ++count) {
      evaluate();
      if (!notifications.deliveries.empty()) return count;
    }
    return 0;
  }

  DayFiles recordFiles{historyFolder, calendar};
  Preferences settings{preferences};
  Catalogue texts;
  LocaleFormats formats{"en_US.UTF-8"};
  Providers sources{*this};
  std::shared_ptr<HistoryRecorder> recorder = std::make_shared<HistoryRecorder>(
      loop, HistoryRecorder::Services{.calendar = calendar, .facts = systemFacts, .files = recordFiles});
  std::shared_ptr<AlertsMonitor> monitor = std::make_shared<AlertsMonitor>(
      loop, AlertsMonitor::Services{settings, notifications, workspace, calendar, texts, formats});
  platform::UserNotification last;  // returned by `fired`
};

}  // namespace kestrune::test
