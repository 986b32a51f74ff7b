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
// Of one processor; only loads above the minimum are listed.
constexpr double minPercent = 0.05;
constexpr double maxPercent = 999;
constexpr double nanosecondsPerSecond = 1e9;

struct Row {
  const ProcessEntry* entry;
  double percent;
};

std::optional<double> percentSince(const CounterPair& before, const CounterPair& now) {
  const auto growth = now.growthSince(before);
  if (!growth) return std::nullopt;
  const std::uint64_t used = checkedAdd(growth->first, growth->second, "the time used by a process");
  return static_cast<double>(used) / (growth->seconds * nanosecondsPerSecond) * 100;
}

}  // namespace

ProcessLoads processLoads(const std::vector<ProcessEntry>& entries, const ProcessTicks& previous, Date now) {
  ProcessLoads result;
  result.ticks.reserve(entries.size());
  std::vector<Row> rows;
  for (const ProcessEntry& entry : entries) {
    const CounterPair tick{.first = entry.tickUser, .second = entry.tickSys, .time = now};
    result.ticks[entry.pid] = tick;
    const auto before = previous.find(entry.pid);
    if (before == previous.end()) continue;
    const auto percent = percentSince(before->second, tick);
    if (percent && *percent > minPercent) rows.push_back({&entry, std::min(*percent, maxPercent)});
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
