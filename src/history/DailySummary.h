#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "runtime/Date.h"

namespace kestrune {

// The running figures of one metric in one hour.
struct BucketStat {
  double sum = 0;
  std::int64_t count = 0;
  double peak = 0;
  Date peakTime = Date::distantPast;  // stays so while no value has exceeded 0

  // Takes a value in. The first of equal peaks keeps its time.
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
  std::int64_t cpuCount = 0;    // minutes in which it was among the busiest; the divisor of both sums
  std::uint64_t memorySum = 0;  // bytes

  double avgCPU() const;  // 0 where it was never counted

  friend bool operator==(const HistoricProcess&, const HistoricProcess&) = default;
};

struct NetworkSSIDStat {
  double uploadBytes = 0;
  double downloadBytes = 0;

  friend bool operator==(const NetworkSSIDStat&, const NetworkSSIDStat&) = default;
};

using SSIDTraffic = std::vector<std::pair<std::string, NetworkSSIDStat>>;

// All that is remembered of one day.
struct DailySummary {
  Date date;  // when the day begins
  // The hours in which the program ran, in that order; one may come twice where the clock was put back.
  std::vector<HourBucket> hours;
  // By name, and by network or the kind of connection. The order of the keys carries no meaning.
  std::map<std::string, HistoricProcess> processes;
  std::map<std::string, NetworkSSIDStat> networkSSIDs;
  // As they were last.
  std::uint64_t diskTotalBytes = 0;
  std::uint64_t diskUsedBytes = 0;
  std::uint64_t diskFreeBytes = 0;
  std::int64_t uptimeDays = 0;
  std::int64_t uptimeHours = 0;
  std::int64_t uptimeMinutes = 0;
  std::int64_t batteryHealthPercent = 0;

  // Worked out at each call. Without hours each of these is 0 or empty. Means are means of the hours' means:
  // an hour with few values weighs as much as a full one.
  std::vector<double> hourlyCPUFractions() const;
  double averageCPU() const;
  double peakCPU() const;
  double averageMemoryGB() const;
  double peakMemoryGB() const;
  // The means of the first and the last entry, without their fractions.
  std::int64_t batteryStartPercent() const;
  std::int64_t batteryEndPercent() const;
  double totalNetworkUpBytes() const;
  double totalNetworkDownBytes() const;
  double totalDiskReadBytes() const;
  double totalDiskWriteBytes() const;
  // At most five, the busiest first.
  std::vector<HistoricProcess> topProcesses() const;
  // The one with most traffic first.
  SSIDTraffic ssidsByTraffic() const;

  friend bool operator==(const DailySummary&, const DailySummary&) = default;
};

}  // namespace kestrune
