#include "providers/MemoryProvider.h"

#include <algorithm>
#include <cstddef>
#include <functional>
#include <utility>

#include "runtime/Checked.h"
#include "runtime/Polling.h"

namespace kestrune {
namespace {

using MemoryPressure = MemorySnapshot::MemoryPressure;

constexpr int ticksPerScan = 3;
constexpr double warningRatio = 0.75;
constexpr double criticalRatio = 0.9;
constexpr std::uint64_t minListedBytes = 1048576;  // only larger processes are listed
constexpr std::size_t listedProcesses = 10;

std::uint64_t add(std::uint64_t a, std::uint64_t b) {
  return checkedAdd(a, b, "the sum of used memory");
}

double ratio(std::uint64_t part, std::uint64_t whole) {
  return static_cast<double>(part) / static_cast<double>(whole);
}

std::vector<MemorySnapshot::ProcessInfo> largestProcesses(const std::vector<ProcessEntry>& entries) {
  std::vector<const ProcessEntry*> rows;
  for (const ProcessEntry& entry : entries) {
    if (entry.memoryBytes > minListedBytes) rows.push_back(&entry);
  }
  std::ranges::stable_sort(rows, std::ranges::greater{}, &ProcessEntry::memoryBytes);
  if (rows.size() > listedProcesses) rows.resize(listedProcesses);

  std::vector<MemorySnapshot::ProcessInfo> result;
  result.reserve(rows.size());
  for (const ProcessEntry* row : rows) {
    result.push_back({.id = row->pid, .name = row->name, .memoryBytes = row->memoryBytes});
  }
  return result;
}

}  // namespace

const char* rawValue(MemoryPressure pressure) {
  switch (pressure) {
    case MemoryPressure::nominal:
      return "nominal";
    case MemoryPressure::warning:
      return "warning";
    case MemoryPressure::critical:
      return "critical";
  }
  return "";
}

MemoryPressure memoryPressure(std::uint64_t usedBytes, std::uint64_t totalBytes) {
  if (totalBytes == 0) return MemoryPressure::nominal;
  const double used = ratio(usedBytes, totalBytes);
  if (used < warningRatio) return MemoryPressure::nominal;
  return used < criticalRatio ? MemoryPressure::warning : MemoryPressure::critical;
}

MemorySnapshot MemorySnapshot::demonstration() {
  return {.usedBytes = 13312000000,
          .totalBytes = 34359738368,
          .pressure = MemoryPressure::nominal,
          .appBytes = 8000000000,
          .wiredBytes = 3400000000,
          .compressedBytes = 1200000000,
          .swapUsedBytes = 0,
          .swapTotalBytes = 0,
          .topProcesses = {}};
}

MemoryProvider::MemoryProvider(MainLoop& loop, platform::Memory& memory,
                               std::shared_ptr<ProcessScanCache> scans)
    : loop_(loop), memory_(memory), scans_(std::move(scans)) {}

MemoryProvider::~MemoryProvider() {
  task_.cancel();
}

void MemoryProvider::start(Duration interval) {
  startPolling(loop_, shared_from_this(), task_, interval, [this] { tick(); });
}

void MemoryProvider::tick() {
  auto snapshot = readSnapshot(current->topProcesses);
  if (!snapshot) return;
  const double percent =
      snapshot->totalBytes == 0 ? 0 : ratio(snapshot->usedBytes, snapshot->totalBytes) * 100;
  current.set(*std::move(snapshot));
  const Clock& clock = loop_.clock();
  history.modify([&](auto& ring) { ring.append({clock.now(), *current}); });
  usageHistory.modify([&](auto& ring) { ring.append({clock.now(), percent}); });
  startScanIfDue();
}

std::optional<MemorySnapshot> MemoryProvider::readSnapshot(
    std::vector<MemorySnapshot::ProcessInfo> topProcesses) {
  const auto usage = memory_.usage();
  if (!usage) return std::nullopt;
  MemorySnapshot snapshot;
  snapshot.wiredBytes = usage->wiredBytes;
  snapshot.appBytes = usage->activeBytes;
  snapshot.compressedBytes = usage->compressedBytes;
  snapshot.usedBytes = add(add(snapshot.wiredBytes, snapshot.appBytes), snapshot.compressedBytes);
  const auto swap = memory_.swapUsage().value_or(platform::SwapUsage{});
  snapshot.swapUsedBytes = swap.usedBytes;
  snapshot.swapTotalBytes = swap.totalBytes;
  if (!physicalBytes_) physicalBytes_ = memory_.physicalBytes().value_or(0);
  snapshot.totalBytes = *physicalBytes_;
  snapshot.pressure = memoryPressure(snapshot.usedBytes, snapshot.totalBytes);
  snapshot.topProcesses = std::move(topProcesses);
  return snapshot;
}

void MemoryProvider::startScanIfDue() {
  if (++pollsSinceLastScan_ < ticksPerScan || isScanning_) return;
  pollsSinceLastScan_ = 0;
  isScanning_ = true;
  scan(loop_, weak_from_this(), scans_);
}

Task MemoryProvider::scan(MainLoop&, std::weak_ptr<MemoryProvider> provider,
                          std::shared_ptr<ProcessScanCache> scans) {
  auto work = [scans] { return largestProcesses(scans->entries()); };
  auto largest = co_await background(scans->lane(), std::move(work));

  const auto strong = provider.lock();
  if (!strong) co_return;
  strong->isScanning_ = false;
  strong->current.modify([&](MemorySnapshot& snapshot) { snapshot.topProcesses = std::move(largest); });
}

}  // namespace kestrune
