#include "history/DailySummary.h"

#include <algorithm>
#include <functional>
#include <limits>
#include <ranges>

#include "runtime/Checked.h"

namespace kestrune {
namespace {

constexpr std::size_t listedProcesses = 5;

double mean(const std::vector<HourBucket>& hours, BucketStat HourBucket::*metric) {
  if (hours.empty()) return 0;
  double sum = 0;
  for (const auto& hour : hours) sum += (hour.*metric).average();
  return sum / static_cast<double>(hours.size());
}

double highestPeak(const std::vector<HourBucket>& hours, BucketStat HourBucket::*metric) {
  const auto peak = [&](const HourBucket& hour) { return (hour.*metric).peak; };
  return hours.empty() ? 0 : std::ranges::max(hours | std::views::transform(peak));
}

double total(const std::vector<HourBucket>& hours, double HourBucket::*bytes) {
  double sum = 0;
  for (const auto& hour : hours) sum += hour.*bytes;
  return sum;
}

// A value out of range, which only a file can contain, becomes the nearest integer.
std::int64_t truncated(double value) {
  constexpr double beyond = 9223372036854775808.0;  // 2^63
  if (value >= beyond) return std::numeric_limits<std::int64_t>::max();
  return value >= -beyond ? static_cast<std::int64_t>(value) : std::numeric_limits<std::int64_t>::min();
}

}  // namespace

void BucketStat::fold(double value, Date now) {
  sum += value;
  count = checkedAdd(count, std::int64_t{1}, "the count of an hour's values");
  if (peak < value) {
    peak = value;
    peakTime = now;
  }
}

double BucketStat::average() const {
  return count >= 1 ? sum / static_cast<double>(count) : 0;
}

double HistoricProcess::avgCPU() const {
  return cpuCount >= 1 ? cpuSum / static_cast<double>(cpuCount) : 0;
}

std::vector<double> DailySummary::hourlyCPUFractions() const {
  std::vector<double> fractions;
  fractions.reserve(hours.size());
  for (const auto& hour : hours) fractions.push_back(hour.cpu.average() / 100);
  return fractions;
}

double DailySummary::averageCPU() const {
  return mean(hours, &HourBucket::cpu);
}

double DailySummary::peakCPU() const {
  return highestPeak(hours, &HourBucket::cpu);
}

double DailySummary::averageMemoryGB() const {
  return mean(hours, &HourBucket::memoryGB);
}

double DailySummary::peakMemoryGB() const {
  return highestPeak(hours, &HourBucket::memoryGB);
}

std::int64_t DailySummary::batteryStartPercent() const {
  return hours.empty() ? 0 : truncated(hours.front().batteryPercent.average());
}

std::int64_t DailySummary::batteryEndPercent() const {
  return hours.empty() ? 0 : truncated(hours.back().batteryPercent.average());
}

double DailySummary::totalNetworkUpBytes() const {
  return total(hours, &HourBucket::networkUpBytes);
}

double DailySummary::totalNetworkDownBytes() const {
  return total(hours, &HourBucket::networkDownBytes);
}

double DailySummary::totalDiskReadBytes() const {
  return total(hours, &HourBucket::diskReadBytes);
}

double DailySummary::totalDiskWriteBytes() const {
  return total(hours, &HourBucket::diskWriteBytes);
}

std::vector<HistoricProcess> DailySummary::topProcesses() const {
  std::vector<const HistoricProcess*> order;
  order.reserve(processes.size());
  for (const auto& [name, process] : processes) order.push_back(&process);
  std::ranges::stable_sort(order, std::ranges::greater{},
                           [](const auto* process) { return process->avgCPU(); });
  if (order.size() > listedProcesses) order.resize(listedProcesses);
  std::vector<HistoricProcess> top;
  top.reserve(order.size());
  for (const auto* process : order) top.push_back(*process);
  return top;
}

SSIDTraffic DailySummary::ssidsByTraffic() const {
  SSIDTraffic networks(networkSSIDs.begin(), networkSSIDs.end());
  std::ranges::stable_sort(networks, std::ranges::greater{}, [](const auto& network) {
    return network.second.uploadBytes + network.second.downloadBytes;
  });
  return networks;
}

}  // namespace kestrune
