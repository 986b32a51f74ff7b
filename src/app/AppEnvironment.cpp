#include "app/AppEnvironment.h"

#include <chrono>

#include "providers/ProcessScanCache.h"

namespace kestrune {

using namespace std::chrono_literals;

namespace {

// A task, so that it runs at the next turn of the loop.
Task refreshAuthorization(MainLoop&, std::shared_ptr<AlertsMonitor> alerts) {
  alerts->refreshAuthorization();
  co_return;
}

}  // namespace

AppEnvironment::AppEnvironment(MainLoop& loop, const platform::Platform& platform,
                               const Surroundings& surroundings)
    : AppEnvironment(
          loop, platform, surroundings,
          std::make_shared<ProcessScanCache>(platform.clock, platform.processTable, *platform.processLane)) {}

AppEnvironment::AppEnvironment(MainLoop& loop, const platform::Platform& platform,
                               const Surroundings& surroundings,
                               const std::shared_ptr<ProcessScanCache>& scans)
    : cpu(std::make_shared<CPUProvider>(loop, platform.processors, platform.chip, scans)),
      memory(std::make_shared<MemoryProvider>(loop, platform.memory, scans)),
      battery(std::make_shared<BatteryProvider>(loop, platform.powerSources)),
      disk(std::make_shared<DiskProvider>(loop, platform.blockStorage, platform.volumes)),
      network(std::make_shared<NetworkProvider>(
          loop, NetworkProvider::Services{platform.networkInterfaces, platform.wifi, platform.location,
                                          *platform.connectionLane})),
      folders(std::make_shared<FolderProvider>(
          loop, FolderProvider::Services{platform.folders, *platform.folderLane})),
      audio(std::make_shared<AudioProvider>(
          loop, AudioProvider::Services{platform.audio, platform.applications, *platform.audioLane})),
      dayFiles(platform.historyFolder, platform.calendar),
      recorder(std::make_shared<HistoryRecorder>(
          loop, HistoryRecorder::Services{platform.calendar, platform.facts, dayFiles})),
      historyStore(dayFiles, platform.calendar),
      alerts(std::make_shared<AlertsMonitor>(
          loop, AlertsMonitor::Services{surroundings.preferences, platform.notifications, platform.workspace,
                                        platform.calendar, surroundings.texts, surroundings.formats})),
      clock_(platform.clock),
      calendar_(platform.calendar),
      facts_(platform.facts) {
  cpu->start(1s);
  memory->start(2s);
  battery->start(30s);
  disk->start(1s);
  network->start(1s);
  audio->start(3s);
  recorder->start({.cpu = cpu, .memory = memory, .battery = battery, .network = network, .disk = disk});
  refreshAuthorization(loop, alerts);
  alerts->start(cpu, memory, disk, recorder);
}

void AppEnvironment::shiftSelectedDate(int days) {
  const Date base = selectedDate->value_or(today());
  const Date target = calendar_.addingDays(base, days).value_or(base);
  selectedDate.set(target < today() ? std::optional(target) : std::nullopt);
}

bool AppEnvironment::canGoBack() const {
  const auto before = calendar_.addingDays(selectedDate->value_or(today()), -1);
  return before && dayFiles.exists(*before);
}

Date AppEnvironment::startOfDay(Date date) const {
  return calendar_.startOfDay(date);
}

std::optional<Date> AppEnvironment::startOfDay(int days) const {
  const auto day = calendar_.addingDays(today(), days);
  return day ? std::optional(calendar_.startOfDay(*day)) : std::nullopt;
}

bool AppEnvironment::isYesterday(Date date) const {
  const auto yesterday = calendar_.addingDays(today(), -1);
  return yesterday && calendar_.startOfDay(date) == calendar_.startOfDay(*yesterday);
}

int AppEnvironment::secondOfDay(Date date) const {
  return calendar_.secondOfDay(date);
}

SystemUptime AppEnvironment::uptime() const {
  return systemUptime(facts_, clock_.now());
}

Date AppEnvironment::today() const {
  return calendar_.startOfDay(clock_.now());
}

}  // namespace kestrune
