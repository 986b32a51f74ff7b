#include "providers/DiskProvider.h"

#include "runtime/Checked.h"
#include "runtime/Polling.h"
#include "runtime/Utf8.h"

namespace kestrune {
namespace {

constexpr const char* rootVolume = "/";

std::uint64_t add(std::uint64_t sum, std::uint64_t bytes) {
  return checkedAdd(sum, bytes, "the sum of the drives' byte counters");
}

}  // namespace

DiskSnapshot DiskSnapshot::demonstration() {
  return {.readBytesPerSec = 2100000.0,
          .writeBytesPerSec = 0.0,
          .volumeName = "Macintosh HD",
          .volumeTotalBytes = 994662400000,
          .volumeUsedBytes = 650000000000,
          .volumeFreeBytes = 344662400000};
}

DiskProvider::DiskProvider(MainLoop& loop, platform::BlockStorage& storage, platform::Volumes& volumes)
    : loop_(loop), storage_(storage), volumes_(volumes) {}

DiskProvider::~DiskProvider() {
  task_.cancel();
}

void DiskProvider::start(Duration interval) {
  startPolling(loop_, shared_from_this(), task_, interval, [this] { readCounters(); });
}

void DiskProvider::tick() {
  auto snapshot = sample();
  if (!snapshot) return;
  current.set(*std::move(snapshot));
  history.modify([&](auto& ring) { ring.append({loop_.clock().now(), *current}); });
}

// Leaves the last reading as it is on failure.
bool DiskProvider::readCounters() {
  const auto drivers = storage_.blockDrivers();
  if (!drivers) return false;
  CounterPair sums{.time = loop_.clock().now()};
  for (const auto& driver : *drivers) {
    sums.first = add(sums.first, driver.bytesRead.value_or(0));
    sums.second = add(sums.second, driver.bytesWritten.value_or(0));
  }
  bytes_ = sums;
  return true;
}

std::optional<DiskSnapshot> DiskProvider::sample() {
  const CounterPair before = bytes_;
  if (!readCounters()) return std::nullopt;
  DiskSnapshot snapshot = *current;
  const auto growth = bytes_.growthSince(before);
  if (!growth) return snapshot;
  snapshot.readBytesPerSec = growth->firstPerSecond();
  snapshot.writeBytesPerSec = growth->secondPerSecond();
  readVolume(snapshot);
  return snapshot;
}

void DiskProvider::readVolume(DiskSnapshot& snapshot) {
  if (const auto name = volumes_.name(rootVolume)) snapshot.volumeName = repairedUtf8(*name);
  if (const auto capacity = volumes_.capacity(rootVolume)) {
    snapshot.volumeTotalBytes = capacity->totalBytes;
    snapshot.volumeFreeBytes = capacity->freeBytes;
    snapshot.volumeUsedBytes =
        capacity->totalBytes < capacity->freeBytes ? 0 : capacity->totalBytes - capacity->freeBytes;
  }
}

}  // namespace kestrune
