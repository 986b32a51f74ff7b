#pragma once

#include <cstdint>
#include <string>

#include "history/DailySummary.h"

namespace kestrune {

// Thirds have the most digits that a number can have.
inline BucketStat fullStat(double mean) {
  return {.sum = mean * 60 / 3, .count = 60, .peak = mean / 3, .peakTime = {800000000.0 + mean / 3}};
}

// A full day: 24 hours, 400 processes, 6 networks.
inline DailySummary fullDay(Date date) {
  DailySummary day{.date = date};
  for (int i = 0; i < 24; ++i) {
    const double figure = 1e9 * (i + 1) / 3;
    day.hours.push_back({.hour = i,
                         .cpu = fullStat(i + 1),
                         .memoryGB = fullStat(i + 8),
                         .batteryPercent = fullStat(100 - i),
                         .networkUpBytes = figure,
                         .networkDownBytes = figure * 7,
                         .diskReadBytes = figure / 7,
                         .diskWriteBytes = figure / 11});
  }
  for (std::uint16_t i = 0; i < 400; ++i) {
    const std::string name = "some-application-" + std::to_string(i);
    day.processes[name] = {
        .name = name, .cpuSum = 1234.5 * i / 7, .cpuCount = i, .memorySum = 123456789012ULL * i};
  }
  for (int i = 0; i < 6; ++i) {
    day.networkSSIDs["Network of a caf\u00e9 " + std::to_string(i)] = {.uploadBytes = 1e9 / 3 * i,
                                                                       .downloadBytes = 1e10 / 3 * i};
  }
  day.diskTotalBytes = day.diskUsedBytes = day.diskFreeBytes = 512110190592;
  return day;
}

}  // namespace kestrune
