#pragma once

#include <map>
#include <optional>

#include "history/DayFiles.h"
#include "platform/Calendar.h"
#include "runtime/Published.h"

namespace kestrune {

// Reads day files and keeps what it has read for good, whatever becomes of the files. Main thread.
class HistoricalDataStore {
 public:
  // Both must outlive the store.
  HistoricalDataStore(DayFiles& files, platform::Calendar& calendar) : files_(files), calendar_(calendar) {}

  // The record of the day that the instant lies in. Absent: there is no readable file; it is looked for anew
  // at the next call. May be called while a view is evaluated.
  std::optional<DailySummary> load(Date date);

  Published<std::map<Date, DailySummary>> cache;  // by the beginning of the day

 private:
  DayFiles& files_;
  platform::Calendar& calendar_;
};

}  // namespace kestrune
