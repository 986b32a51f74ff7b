#include "providers/ProcessScanCache.h"

#include <cstddef>
#include <string_view>
#include <utility>

#include "runtime/Utf8.h"

namespace kestrune {
namespace {

// Buffer size for names and paths, including the terminating NUL.
constexpr std::size_t textBytes = 1024;

std::string shownName(std::string_view bytes) {
  return repairedUtf8(bytes.substr(0, textBytes - 1));
}

std::string shownPath(std::string_view bytes) {
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
  const auto readings = table_->readings();
  std::vector<ProcessEntry> entries;
  entries.reserve(readings.size());
  for (const auto& reading : readings) {
    std::string name = shownName(reading.name);
    if (name.empty()) continue;
    entries.push_back({.pid = reading.pid,
                       .name = std::move(name),
                       .executablePath = shownPath(reading.executablePath),
                       .memoryBytes = reading.residentBytes,
                       .tickUser = reading.userNanoseconds,
                       .tickSys = reading.systemNanoseconds});
  }
  return entries;
}

}  // namespace kestrune
