#pragma once

#include <gmock/gmock.h>

#include "alerts/AlertsMonitor.h"
#include "support/ScriptedPlatform.h"

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
    cpu->current.set({.usagePercent = usage, .coreUsages = std::move(cores), .topProcesses = {}});
  }
  void setPressure(Pressure level, double usedGB = 12) {
    MemorySnapshot snapshot;
    snapshot.usedBytes = static_cast<std::uint64_t>(usedGB * 0x1p30);
    snapshot.totalBytes = 16 * gigabyte;
    snapshot.pressure = level;
    memoryProvider->current.set(snapshot);
  }
  void setDisk(std::uint64_t total, std::uint64_t used) {
    DiskSnapshot snapshot;
    snapshot.volumeTotalBytes = total;
    snapshot.volumeUsedBytes = used;
    snapshot.volumeFreeBytes = total - used;
    disk->current.set(snapshot);
  }
  // A day with this much traffic, up and down together, spread over three hours.
  void setTraffic(double gigabytes) {
    HourBucket hour;
    hour.networkUpBytes = gigabytes * 0x1p30 / 12;
    hour.networkDownBytes = gigabytes * 0x1p30 / 4;
    recorder->current.hours.assign(3, hour);
  }
  void set(const char* key, platform::PreferenceValue value) { settings.set(key, std::move(value)); }

  // Starts the monitor and authorizes it.
  void start() {
    monitor->refreshAuthorization();
    monitor->start(cpu, memoryProvider, disk, recorder);
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
  std::shared_ptr<ProcessScanCache> scans = std::make_shared<ProcessScanCache>(clock, processTable, *lane);
  std::shared_ptr<CPUProvider> cpu = std::make_shared<CPUProvider>(loop, processors, chip, scans);
  std::shared_ptr<MemoryProvider> memoryProvider = std::make_shared<MemoryProvider>(loop, memory, scans);
  std::shared_ptr<DiskProvider> disk = std::make_shared<DiskProvider>(loop, blockStorage, volumes);
  std::shared_ptr<HistoryRecorder> recorder = std::make_shared<HistoryRecorder>(
      loop, HistoryRecorder::Services{.calendar = calendar, .facts = systemFacts, .files = recordFiles});
  std::shared_ptr<AlertsMonitor> monitor = makeMonitor(formats);
  platform::UserNotification last;  // returned by `fired`

  std::shared_ptr<AlertsMonitor> makeMonitor(LocaleFormats& localeFormats) {
    return std::make_shared<AlertsMonitor>(loop, AlertsMonitor::Services{.preferences = settings,
                                                                         .notifications = notifications,
                                                                         .workspace = workspace,
                                                                         .calendar = calendar,
                                                                         .texts = texts,
                                                                         .formats = localeFormats});
  }
};

}  // namespace kestrune::test
