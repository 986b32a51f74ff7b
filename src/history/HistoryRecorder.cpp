#include "history/HistoryRecorder.h"

#include <chrono>
#include <cstdio>
#include <string>
#include <utility>

#include "history/SystemUptime.h"
#include "runtime/Checked.h"

namespace kestrune {
namespace {

using namespace std::chrono_literals;

constexpr double secondsPerTick = 60;
constexpr double gibibytesPerByte = 1.0 / 1073741824;
constexpr std::int64_t ticksPerSave = 10;

bool isKnownConnection(const std::string& label) {
  return label == "Wi-Fi" || label == "Ethernet";
}

}  // namespace

HistoryRecorder::HistoryRecorder(MainLoop& loop, const Services& services)
    : loop_(loop), services_(services), dayStart_(services.calendar.startOfDay(loop.clock().now())) {
  auto saved = services_.files.read(dayStart_);
  if (saved) {
    current = *std::move(saved);
  } else {
    current.date = dayStart_;
  }
}

HistoryRecorder::~HistoryRecorder() {
  task_.cancel();
}

void HistoryRecorder::start(const Sources& sources) {
  task_.cancel();
  task_ = record(loop_, weak_from_this(), sources);
}

Task HistoryRecorder::record(MainLoop&, std::weak_ptr<HistoryRecorder> recorder, Sources sources) {
  while (!co_await isCancelled()) {
    co_await sleep(60s);
    if (const auto strong = recorder.lock()) strong->tick(sources);
  }
}

void HistoryRecorder::tick(const Sources& sources) {
  const Date now = loop_.clock().now();
  const Date today = services_.calendar.startOfDay(now);
  if (today > dayStart_) {
    save(current);
    dayStart_ = today;
    current = {};
    current.date = today;
  }
  const NetworkSnapshot& network = *sources.network->current;
  const DiskSnapshot& disk = *sources.disk->current;
  HourBucket& bucket = bucketOf(services_.calendar.hour(now));
  bucket.cpu.fold(sources.cpu->current->usagePercent, now);
  bucket.memoryGB.fold(static_cast<double>(sources.memory->current->usedBytes) * gibibytesPerByte, now);
  bucket.batteryPercent.fold(static_cast<double>(sources.battery->current->percent), now);
  // A rate counts as if it had held for the whole minute.
  bucket.networkUpBytes += network.uploadBytesPerSec * secondsPerTick;
  bucket.networkDownBytes += network.downloadBytesPerSec * secondsPerTick;
  addNetwork(network);
  bucket.diskReadBytes += disk.readBytesPerSec * secondsPerTick;
  bucket.diskWriteBytes += disk.writeBytesPerSec * secondsPerTick;
  addProcesses(*sources.cpu->current);
  noteLatest(sources, now);
  if (isSaveMoment()) save(current);
}

HourBucket& HistoryRecorder::bucketOf(std::int64_t hour) {
  if (current.hours.empty() || current.hours.back().hour != hour) {
    current.hours.emplace_back();
    current.hours.back().hour = hour;
  }
  return current.hours.back();
}

void HistoryRecorder::addNetwork(const NetworkSnapshot& network) {
  if (!network.ssid && !isKnownConnection(network.interfaceName)) return;
  NetworkSSIDStat& entry = current.networkSSIDs[network.ssid.value_or(network.interfaceName)];
  entry.uploadBytes += network.uploadBytesPerSec * secondsPerTick;
  entry.downloadBytes += network.downloadBytesPerSec * secondsPerTick;
}

void HistoryRecorder::addProcesses(const CPUSnapshot& cpu) {
  for (const auto& listed : cpu.topProcesses) {
    HistoricProcess& process = current.processes[listed.name];
    process.name = listed.name;
    process.cpuSum += listed.cpuPercent;
    process.cpuCount = checkedAdd(process.cpuCount, std::int64_t{1}, "the count of a process's minutes");
    process.memorySum = checkedAdd(process.memorySum, listed.memoryBytes, "the sum of a process's memory");
  }
}

void HistoryRecorder::noteLatest(const Sources& sources, Date now) {
  const DiskSnapshot& disk = *sources.disk->current;
  current.diskTotalBytes = disk.volumeTotalBytes;
  current.diskUsedBytes = disk.volumeUsedBytes;
  current.diskFreeBytes = disk.volumeFreeBytes;
  current.batteryHealthPercent = sources.battery->current->healthPercent;
  const SystemUptime uptime = systemUptime(services_.facts, now);
  current.uptimeDays = uptime.days;
  current.uptimeHours = uptime.hours;
  current.uptimeMinutes = uptime.minutes;
}

// Counted over the whole day, so that a restarted program keeps the rhythm.
bool HistoryRecorder::isSaveMoment() const {
  std::int64_t ticks = 0;
  for (const auto& hour : current.hours) ticks = checkedAdd(ticks, hour.cpu.count, "the ticks of a day");
  return ticks % ticksPerSave == 0;
}

void HistoryRecorder::save(const DailySummary& summary) {
  const auto error = services_.files.write(summary);
  if (!error) return;
  std::printf("[HistoryRecorder] save failed: %s\n", error->c_str());
  std::fflush(stdout);
}

}  // namespace kestrune
