#include "providers/CPUProvider.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "runtime/Checked.h"
#include "runtime/Polling.h"
#include "runtime/Utf8.h"

namespace kestrune {
namespace {

constexpr int ticksPerMenuBarUpdate = 3;
constexpr int ticksPerScan = 3;

ChipInfo readChipInfo(platform::Chip& chip) {
  ChipInfo info{.name = repairedUtf8(chip.brand()),
                .physicalCores = chip.physicalCores(),
                .perfCores = chip.performanceCores(),
                .effCores = chip.efficiencyCores()};
  if (info.name.empty()) info.name = repairedUtf8(chip.machineModel());
  return info;
}

std::int32_t add(std::int32_t a, std::int32_t b) {
  return checkedAdd(a, b, "the sum of processor ticks");
}

std::int32_t subtract(std::int32_t a, std::int32_t b) {
  return checkedSubtract(a, b, "the difference of processor ticks");
}

// `total` is at least 1. The clamp covers counters that ran backwards.
double percent(std::int32_t busy, std::int32_t total) {
  return std::clamp(static_cast<double>(busy) / static_cast<double>(total) * 100, 0.0, 100.0);
}

}  // namespace

CPUSnapshot CPUSnapshot::demonstration() {
  return {
      .usagePercent = 34.0,
      .coreUsages = {},
      .topProcesses = {
          {.id = 1, .name = "Xcode", .executablePath = "", .cpuPercent = 18.2, .memoryBytes = 4100000000},
          {.id = 2,
           .name = "Chrome Helper",
           .executablePath = "",
           .cpuPercent = 9.1,
           .memoryBytes = 892000000},
          {.id = 3, .name = "docker", .executablePath = "", .cpuPercent = 4.3, .memoryBytes = 2800000000}}};
}

std::string ChipInfo::coreDescription() const {
  if (perfCores < 1 || effCores < 1) return std::to_string(physicalCores);
  return std::to_string(effCores) + "E + " + std::to_string(perfCores) + "P";
}

CPUProvider::CPUProvider(MainLoop& loop, platform::Processors& processors, platform::Chip& chip,
                         std::shared_ptr<ProcessScanCache> scans)
    : chipInfo(readChipInfo(chip)), loop_(loop), processors_(processors), scans_(std::move(scans)) {}

CPUProvider::~CPUProvider() {
  pollingTask_.cancel();
}

void CPUProvider::start(Duration interval) {
  startPolling(loop_, shared_from_this(), pollingTask_, interval, [this] { tick(); });
}

void CPUProvider::tick() {
  Load load = sample();
  current.modify([&](CPUSnapshot& snapshot) {
    snapshot.usagePercent = load.usage;
    snapshot.coreUsages = std::move(load.cores);
  });
  const Clock& clock = loop_.clock();
  history.modify([&](auto& ring) { ring.append({clock.now(), *current}); });
  usageHistory.modify([&](auto& ring) { ring.append({clock.now(), load.usage}); });
  if (++menuBarUpdateCount_ >= ticksPerMenuBarUpdate) {
    menuBarUpdateCount_ = 0;
    menuBarUsagePercent.set(load.usage);
  }
  startScanIfDue();
}

CPUProvider::Load CPUProvider::sample() {
  const auto ticks = processors_.processorTicks();
  if (!ticks || ticks->empty()) return {current->usagePercent, current->coreUsages};

  std::int32_t busy = 0;
  std::int32_t total = 0;
  std::vector<std::int32_t> coreBusy;
  std::vector<std::int32_t> coreTotal;
  coreBusy.reserve(ticks->size());
  coreTotal.reserve(ticks->size());
  for (const auto& core : *ticks) {
    coreBusy.push_back(add(add(core.user, core.system), core.nice));
    coreTotal.push_back(add(coreBusy.back(), core.idle));
    busy = add(busy, coreBusy.back());
    total = add(total, coreTotal.back());
  }

  Load load{current->usagePercent, current->coreUsages};
  if (prevReady_) {
    const std::int32_t deltaBusy = subtract(busy, prevBusy_);
    const std::int32_t deltaTotal = subtract(total, prevTotal_);
    if (deltaTotal >= 1) load.usage = percent(deltaBusy, deltaTotal);
    load.cores.assign(coreBusy.size(), 0);
    // A processor that appeared since the last read stays at 0 for this tick.
    const std::size_t known = std::min(coreBusy.size(), prevCoreBusy_.size());
    for (std::size_t i = 0; i < known; ++i) {
      const std::int32_t deltaCoreBusy = subtract(coreBusy[i], prevCoreBusy_[i]);
      const std::int32_t deltaCoreTotal = subtract(coreTotal[i], prevCoreTotal_[i]);
      if (deltaCoreTotal >= 1) load.cores[i] = percent(deltaCoreBusy, deltaCoreTotal);
    }
  }
  prevBusy_ = busy;
  prevTotal_ = total;
  prevCoreBusy_ = std::move(coreBusy);
  prevCoreTotal_ = std::move(coreTotal);
  prevReady_ = true;
  return load;
}

void CPUProvider::startScanIfDue() {
  if (++pollsSinceLastScan_ < ticksPerScan || isScanning_) return;
  pollsSinceLastScan_ = 0;
  isScanning_ = true;
  // The scan takes the old ticks instead of a copy: nothing reads them until it delivers the new ones, and
  // this way they are freed off the main thread.
  scan(loop_, weak_from_this(), scans_, std::exchange(prevProcTicks_, {}));
}

Task CPUProvider::scan(MainLoop& loop, std::weak_ptr<CPUProvider> provider,
                       std::shared_ptr<ProcessScanCache> scans, ProcessTicks previous) {
  auto work = [scans, previous = std::move(previous), &clock = loop.clock()] {
    const auto& entries = scans->entries();
    return processLoads(entries, previous, clock.now());
  };
  ProcessLoads loads = co_await background(scans->lane(), std::move(work));

  const auto strong = provider.lock();
  if (!strong) co_return;
  strong->prevProcTicks_ = std::move(loads.ticks);
  strong->isScanning_ = false;
  strong->current.modify([&](CPUSnapshot& snapshot) { snapshot.topProcesses = std::move(loads.busiest); });
}

}  // namespace kestrune
