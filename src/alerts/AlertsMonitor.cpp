#include "alerts/AlertsMonitor.h"

#include <algorithm>
#include <cstdio>
#include <utility>

#include <fmt/format.h>

namespace kestrune {
namespace {

using namespace std::chrono_literals;
using platform::NotificationAuthorization;
using MemoryPressure = MemorySnapshot::MemoryPressure;

constexpr Duration interval = 5s;
constexpr Duration highCPUSpan = 30s;
constexpr Duration pinnedCoreSpan = 20s;
constexpr double pinnedCorePercent = 90;
constexpr Duration diskCooldown = 1h;

double inGB(double bytes) {
  return bytes * 0x1p-30;
}
double inGB(std::uint64_t bytes) {
  return inGB(static_cast<double>(bytes));
}

// Percent of the volume; 100 if its size is unknown. The division comes last, so that a whole number of
// percent stays exact.
double freePercentOf(const DiskSnapshot& disk) {
  if (disk.volumeTotalBytes == 0) return 100;
  const auto total = static_cast<double>(disk.volumeTotalBytes);
  return (total - static_cast<double>(disk.volumeUsedBytes)) * 100 / total;
}

// True once the condition has lasted that long at `now`; the count then restarts.
bool hasLasted(std::optional<ContinuousTime>& since, ContinuousTime now, Duration span) {
  if (!since) since = now;
  if (now - *since < span) return false;
  since = now;
  return true;
}

void reportFailure(const std::string& identifier, std::string error) {
  std::ranges::replace(error, '\n', ' ');
  std::fputs(fmt::format("[AlertsMonitor] failed to deliver '{}': {}\n", identifier, error).c_str(), stdout);
  std::fflush(stdout);
}

}  // namespace

AlertsMonitor::AlertsMonitor(MainLoop& loop, const Services& services)
    : loop_(loop),
      services_(services),
      settings_(services.preferences),
      texts_(services.texts, services.formats) {}

AlertsMonitor::~AlertsMonitor() {
  task_.cancel();
}

void AlertsMonitor::start(std::shared_ptr<const CPUProvider> cpu,
                          std::shared_ptr<const MemoryProvider> memory,
                          std::shared_ptr<const DiskProvider> disk,
                          std::shared_ptr<const HistoryRecorder> recorder) {
  task_.cancel();
  task_ =
      evaluateAgainAndAgain(loop_, weak_from_this(),
                            Sources{std::move(cpu), std::move(memory), std::move(disk), std::move(recorder)});
}

Task AlertsMonitor::evaluateAgainAndAgain(MainLoop&, std::weak_ptr<AlertsMonitor> monitor, Sources sources) {
  while (!co_await isCancelled()) {
    co_await sleep(interval);
    if (const auto strong = monitor.lock()) strong->evaluate(sources);
  }
}

void AlertsMonitor::refreshAuthorization() {
  services_.notifications.authorizationStatus([weak = weak_from_this()](NotificationAuthorization status) {
    if (const auto monitor = weak.lock()) monitor->authorizationStatus.set(status);
  });
}

void AlertsMonitor::requestAuthorization() {
  services_.notifications.requestAuthorization([weak = weak_from_this()] {
    if (const auto monitor = weak.lock()) monitor->refreshAuthorization();
  });
}

void AlertsMonitor::openNotificationSettings() {
  services_.workspace.openSettings(platform::SettingsPanel::notifications);
}

void AlertsMonitor::sendTest(Sample kind) {
  switch (kind) {
    case Sample::cpu:
      deliver(texts_.highCPU("test-cpu", settings_.cpuThreshold.get(), 85));
      break;
    case Sample::memory:
      deliver(texts_.memoryPressure("test-memory", MemoryPressure::warning, 12.3, 16));
      break;
    case Sample::disk:
      deliver(texts_.lowDisk("test-disk", 8, 40.2));
      break;
    case Sample::network:
      deliver(texts_.dailyData("test-network", static_cast<double>(settings_.networkDailyGB.get()) + 0.1));
      break;
  }
}

void AlertsMonitor::evaluate(const Sources& sources) {
  if (!settings_.isEnabled.get()) return;
  const auto status = authorizationStatus.get();
  if (status != NotificationAuthorization::authorized && status != NotificationAuthorization::provisional) {
    return;
  }
  const ContinuousTime now = loop_.clock().continuousNow();
  checkCPU(sources.cpu->current.get(), now);
  checkMemory(sources.memory->current.get());
  checkDisk(sources.disk->current.get(), now);
  checkNetwork(sources.recorder->current);
}

void AlertsMonitor::checkCPU(const CPUSnapshot& cpu, ContinuousTime now) {
  if (!settings_.cpuIsEnabled.get()) {
    cpuHighSince_.reset();
    corePinnedSince_.reset();
    return;
  }
  checkTotal(cpu.usagePercent, now);
  checkCores(cpu.coreUsages, now);
}

void AlertsMonitor::checkTotal(double usagePercent, ContinuousTime now) {
  const double threshold = settings_.cpuThreshold.get();
  if (usagePercent < threshold) {
    cpuHighSince_.reset();
  } else if (hasLasted(cpuHighSince_, now, highCPUSpan)) {
    deliver(texts_.highCPU("cpu-high", threshold, usagePercent));
  }
}

// The time keeps running while the load moves from core to core.
void AlertsMonitor::checkCores(const std::vector<double>& usages, ContinuousTime now) {
  const auto busiest = std::ranges::max_element(usages);
  if (busiest == usages.end() || !(*busiest >= pinnedCorePercent)) {
    corePinnedSince_.reset();
  } else if (hasLasted(corePinnedSince_, now, pinnedCoreSpan)) {
    deliver(texts_.saturatedCore("cpu-core-pinned", busiest - usages.begin() + 1, *busiest));
  }
}

// Fires when the level changes in either direction, and not again while it stays.
void AlertsMonitor::checkMemory(const MemorySnapshot& memory) {
  if (!settings_.memoryIsEnabled.get()) {
    lastMemoryPressure_ = MemoryPressure::nominal;
    return;
  }
  if (std::exchange(lastMemoryPressure_, memory.pressure) == memory.pressure) return;
  const auto lowest =
      settings_.memoryThreshold.get() == "critical" ? MemoryPressure::critical : MemoryPressure::warning;
  if (memory.pressure < lowest) return;
  deliver(texts_.memoryPressure("memory-pressure", memory.pressure, inGB(memory.usedBytes),
                                inGB(memory.totalBytes)));
}

void AlertsMonitor::checkDisk(const DiskSnapshot& disk, ContinuousTime now) {
  if (!settings_.diskIsEnabled.get()) {
    diskAlertedAt_.reset();
    return;
  }
  const double freePercent = freePercentOf(disk);
  if (!(freePercent < static_cast<double>(settings_.diskThreshold.get()))) {
    diskAlertedAt_.reset();
    return;
  }
  if (diskAlertedAt_ && now - *diskAlertedAt_ <= diskCooldown) return;
  deliver(texts_.lowDisk("disk-low", freePercent, inGB(disk.volumeFreeBytes)));
  diskAlertedAt_ = now;
}

// Fires once a day per limit, and again if the limit is raised and then exceeded. (For the first minute of a
// day the record may still be the previous day's.)
void AlertsMonitor::checkNetwork(const DailySummary& day) {
  if (!settings_.networkIsEnabled.get()) return;
  const Date today = services_.calendar.startOfDay(loop_.clock().now());
  if (networkAlertFiredDay_ < today) {
    networkAlertFiredDay_ = today;
    networkAlertFiredGB_ = 0;
  }
  double total = 0;
  for (const auto& hour : day.hours) total += hour.networkUpBytes + hour.networkDownBytes;
  const std::int64_t limit = settings_.networkDailyGB.get();
  if (static_cast<double>(limit) * 0x1p30 > total || networkAlertFiredGB_ >= limit) return;
  networkAlertFiredGB_ = limit;
  deliver(texts_.dailyData("network-daily", inGB(total)));
}

void AlertsMonitor::deliver(const platform::UserNotification& alert) {
  services_.notifications.deliver(alert, [identifier = alert.identifier](std::optional<std::string> error) {
    if (error) reportFailure(identifier, *std::move(error));
  });
}

}  // namespace kestrune
