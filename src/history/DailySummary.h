#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "runtime/Date.h"

namespace kestrune {

// The statistics of one metric in one hour.
struct BucketStat {
  double sum = 0;
  std::int64_t count = 0;
  double peak = 0;
  Date peakTime = Date::distantPast;  // unchanged until a value exceeds 0

  // Adds a value. The first of equal peaks keeps its time.
  void fold(double value, Date now);
  double average() const;  // 0 without values

  friend bool operator==(const BucketStat&, const BucketStat&) = default;
};

struct HourBucket {
  std::int64_t hour = 0;  // 0 to 23, in the user's calendar
  BucketStat cpu;         // percent
  BucketStat memoryGB;    // units of 2^30 bytes
  BucketStat batteryPercent;
  double networkUpBytes = 0;
  double networkDownBytes = 0;
  double diskReadBytes = 0;
  double diskWriteBytes = 0;

  friend bool operator==(const HourBucket&, const HourBucket&) = default;
};

struct HistoricProcess {
  std::string name;
  double cpuSum = 0;            // percent
  std::int64_t cpuCount = 0;    // how often it was among the busiest; the divisor of both sums
  std::uint64_t memorySum = 0;  // bytes

  double avgCPU() const;  // 0 if it was never counted

  friend bool operator==(const HistoricProcess&, const HistoricProcess&) = default;
};

struct NetworkSSIDStat {
  double uploadBytes = 0;
  double downloadBytes = 0;

  friend bool operator==(const NetworkSSIDStat&, const NetworkSSIDStat&) = default;
};

using SSIDTraffic = std::vector<std::pair<std::string, NetworkSSIDStat>>;

// Everything recorded about one day.
struct DailySummary {
  Date date;  // start of the day
  // The hours in which the program ran, in order of appearance; one can appear twice if the clock was set
  // back.
  std::vector<HourBucket> hours;
  // By process name, and by network or kind of connection. The order of the keys has no meaning.
  std::map<std::string, HistoricProcess> processes;
  std::map<std::string, NetworkSSIDStat> networkSSIDs;
  // As of the last tick.
  std::uint64_t diskTotalBytes = 0;
  std::uint64_t diskUsedBytes = 0;
  std::uint64_t diskFreeBytes = 0;
  std::int64_t uptimeDays = 0;
  std::int64_t uptimeHours = 0;
  std::int64_t uptimeMinutes = 0;
  std::int64_t batteryHealthPercent = 0;

  // Computed at each call; 0 or empty without hours. Averages are averages of the hourly averages: an hour
  // with few values weighs as much as a full one.
  std::vector<double> hourlyCPUFractions() const;
  double averageCPU() const;
  double peakCPU() const;
  double averageMemoryGB() const;
  double peakMemoryGB() const;
  // The averages of the first and the last hour, truncated.
  std::int64_t batteryStartPercent() const;
  std::int64_t batteryEndPercent() const;
  double totalNetworkUpBytes() const;
  double totalNetworkDownBytes() const;
  double totalDiskReadBytes() const;
  double totalDiskWriteBytes() const;
  // At most five, busiest first.
  std::vector<HistoricProcess> topProcesses() const;
  // Most traffic first.
  SSIDTraffic ssidsByTraffic() const;

  friend bool operator==(const DailySummary&, const DailySummary&) = default;
};

}  // namespace kestrune
