#include "providers/ProcessScanCache.h"

#include <cstddef>
#include <span>
#include <string_view>
#include <utility>

#include "runtime/Utf8.h"

namespace kestrune {
namespace {

// Names and paths are read into so many bytes, a closing zero included.
constexpr std::size_t textBytes = 1024;

// Processes may begin between the count and the listing.
constexpr std::size_t spareIds = 32;

std::string nameOf(platform::ProcessTable& table, std::int32_t pid) {
  const std::string bytes = table.name(pid);
  return repairedUtf8(std::string_view(bytes).substr(0, textBytes - 1));
}

std::string pathOf(platform::ProcessTable& table, std::int32_t pid) {
  const std::string bytes = table.executablePath(pid);
  return bytes.size() < textBytes ? repairedUtf8(bytes) : std::string();
}

}  // namespace

ProcessScanCache::ProcessScanCache(const Clock& clock, std::shared_ptr<platform::ProcessTable> table,
                                   WorkLane& lane)
    : clock_(clock), table_(std::move(table)), lane_(lane) {}

const std::vector<ProcessEntry>& ProcessScanCache::entries() {
  const double age = clock_.now() - lastScanDate_;
  // The age is negative after the wall clock was set back. Without a new walk the list would freeze until the
  // clock catches up.
  const bool isFresh = age >= 0 && age < staleness;
  if (!isFresh) {
    cachedEntries_ = walk();
    lastScanDate_ = clock_.now();
  }
  return cachedEntries_;
}

std::vector<ProcessEntry> ProcessScanCache::walk() {
  const std::int32_t count = table_->processCount();
  if (count < 1) return {};
  std::vector<std::int32_t> pids(static_cast<std::size_t>(count) + spareIds);
  const std::int32_t listed = table_->listPids(pids);
  if (listed < 1) return {};

  std::vector<ProcessEntry> entries;
  entries.reserve(static_cast<std::size_t>(listed));
  for (const std::int32_t pid : std::span(pids).first(static_cast<std::size_t>(listed))) {
    if (pid < 1) continue;
    const auto info = table_->taskInfo(pid);
    if (!info) continue;
    std::string name = nameOf(*table_, pid);
    if (name.empty()) continue;
    entries.push_back({.pid = pid,
                       .name = std::move(name),
                       .executablePath = pathOf(*table_, pid),
                       .memoryBytes = info->residentBytes,
                       .tickUser = info->userNanoseconds,
                       .tickSys = info->systemNanoseconds});
  }
  return entries;
}

}  // namespace kestrune
