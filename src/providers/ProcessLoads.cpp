#include "providers/ProcessLoads.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>

#include "runtime/Checked.h"

namespace kestrune {
namespace {

constexpr std::size_t listedProcesses = 8;
constexpr double shortestSpan = 0.1;   // seconds
constexpr double leastPercent = 0.05;  // of one processor; what is listed lies above
constexpr double mostPercent = 999;    // of one processor
constexpr double nanosecondsPerSecond = 1e9;

struct Row {
  const ProcessEntry* entry;
  double percent;
};

// A counter that went backwards belongs to another process with the same id.
std::uint64_t growth(std::uint64_t now, std::uint64_t before) {
  return now < before ? 0 : now - before;
}

std::optional<double> percentSince(const ProcessTick& before, const ProcessTick& now) {
  const double span = now.time - before.time;
  if (!(span > shortestSpan)) return std::nullopt;
  const std::uint64_t used =
      checkedAdd(growth(now.user, before.user), growth(now.sys, before.sys), "the time used by a process");
  return static_cast<double>(used) / (span * nanosecondsPerSecond) * 100;
}

}  // namespace

ProcessLoads processLoads(const std::vector<ProcessEntry>& entries, const ProcessTicks& previous, Date now) {
  ProcessLoads result;
  result.ticks.reserve(entries.size());
  std::vector<Row> rows;
  for (const ProcessEntry& entry : entries) {
    const ProcessTick tick{.user = entry.tickUser, .sys = entry.tickSys, .time = now.seconds};
    result.ticks[entry.pid] = tick;
    const auto before = previous.find(entry.pid);
    if (before == previous.end()) continue;
    const auto percent = percentSince(before->second, tick);
    if (percent && *percent > leastPercent) rows.push_back({&entry, std::min(*percent, mostPercent)});
  }

  std::ranges::stable_sort(rows, std::ranges::greater{}, &Row::percent);
  if (rows.size() > listedProcesses) rows.resize(listedProcesses);
  result.busiest.reserve(rows.size());
  for (const auto& [entry, percent] : rows) {
    result.busiest.push_back({.id = entry->pid,
                              .name = entry->name,
                              .executablePath = entry->executablePath,
                              .cpuPercent = percent,
                              .memoryBytes = entry->memoryBytes});
  }
  return result;
}

}  // namespace kestrune
