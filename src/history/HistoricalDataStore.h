#pragma once

#include <map>
#include <optional>
#include <vector>

#include "history/DayFiles.h"
#include "platform/Calendar.h"
#include "runtime/Published.h"

namespace kestrune {

// Reads the records of past days, for the pages. Main thread.
class HistoricalDataStore {
 public:
  // Both must outlive the store.
  HistoricalDataStore(DayFiles& files, platform::Calendar& calendar) : files_(files), calendar_(calendar) {}

  // The record of the day that contains the instant. A record that was read once stays in the cache for good,
  // even if its file changes or disappears. Absent: there is no readable file; the next call looks again. May
  // be called while a view is evaluated.
  std::optional<DailySummary> load(Date date);
  // The records of the `count` days before the day that contains the instant, the latest first. Days without
  // a readable file are left out. Reads every file at each call, past the cache: what the recorder saved
  // since the last call is in the result.
  std::vector<DailySummary> daysBefore(Date date, int count) const;

  Published<std::map<Date, DailySummary>> cache;  // by the start of the day

 private:
  DayFiles& files_;
  platform::Calendar& calendar_;
};

}  // namespace kestrune
