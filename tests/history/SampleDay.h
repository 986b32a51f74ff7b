#pragma once

#include "history/DailySummary.h"

namespace kestrune::test {

// A small record in which every field has a different value, including difficult ones: limits of the
// integers, repeating fractions, non-ASCII characters and characters that JSON escapes.
inline DailySummary sampleDay(Date date) {
  DailySummary day{.date = date};
  day.hours.push_back({.hour = 9,
                       .cpu = {.sum = 100.1, .count = 60, .peak = 99.999, .peakTime = date + 33000.123456},
                       .memoryGB = {.sum = 1.0 / 3, .count = 59, .peak = 8, .peakTime = date + 1},
                       .batteryPercent = {},
                       .networkUpBytes = 1e15 / 7,
                       .networkDownBytes = 5e-324,
                       .diskReadBytes = 1.7976931348623157e308,
                       .diskWriteBytes = 3});
  day.hours.push_back({.hour = 10, .networkUpBytes = 0.1 + 0.2, .diskWriteBytes = 9007199254740994.0});
  const auto process = [&](const std::string& name, std::int64_t count, std::uint64_t memory) {
    day.processes[name] = {.name = name, .cpuSum = 12.5, .cpuCount = count, .memorySum = memory};
  };
  process("bash", 9223372036854775807, 18446744073709551615U);
  process("caf\u00e9 \"\\/\n\x01\u2028", -9223372036854775807 - 1, 9223372036854775808U);
  process("", 0, 9007199254740993U);
  day.networkSSIDs["\U0001F600"] = {.uploadBytes = 10, .downloadBytes = 20.25};
  day.networkSSIDs["Ethernet"] = {.uploadBytes = 30, .downloadBytes = 40};
  day.diskTotalBytes = 512110190592;
  day.diskUsedBytes = 400;
  day.diskFreeBytes = 18446744073709551615U;
  day.uptimeDays = 12;
  day.uptimeHours = 23;
  day.uptimeMinutes = 59;
  day.batteryHealthPercent = 97;
  return day;
}

}  // namespace kestrune::test
