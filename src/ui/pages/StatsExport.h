#pragma once

#include <functional>
#include <string>
#include <vector>

#include "history/DailySummary.h"

namespace kestrune::ui {

// One day's figures, as the charts show them and the export lists them.
struct DayStats {
  Date date;  // when the day begins
  double avgCPU = 0;
  double peakCPU = 0;
  double avgMemoryGB = 0;
  double peakMemoryGB = 0;
  double networkUpMB = 0;
  double networkDownMB = 0;
  double diskReadMB = 0;
  double diskWriteMB = 0;
};

// `startOfDay`: when the day of the record begins.
DayStats dayStats(const DailySummary& record, Date startOfDay);

// Both as lines of text, without a trailing line feed: a table of the days and one of their busiest
// processes. Numbers don't follow the locale, and nothing is quoted. `dayName` writes a date as "2026-05-09".
std::string statsCSV(const std::vector<DayStats>& stats, const std::vector<DailySummary>& records,
                     const std::function<std::string(Date)>& dayName);

}  // namespace kestrune::ui
