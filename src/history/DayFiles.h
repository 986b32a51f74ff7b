#pragma once

#include <functional>
#include <optional>
#include <string>

#include "history/DailySummary.h"
#include "platform/Calendar.h"
#include "platform/HistoryFolder.h"

namespace kestrune {

// The day files: one for each day on which the program ran, named after it. Main thread.
class DayFiles {
 public:
  // Both must outlive it.
  DayFiles(platform::HistoryFolder& storage, platform::Calendar& calendar)
      : storage_(storage), calendar_(calendar) {}

  // "2026-05-09.json" for the day that begins then, in the time zone as it stood when a name was first asked
  // for.
  std::string name(Date midnight) const;
  // The same without the ending.
  std::string dayName(Date midnight) const;
  // Whether there is a file, damaged or not.
  bool exists(Date midnight) const { return storage_.exists(name(midnight)); }
  // Absent: there is no such file, it can't be read, or it is damaged.
  std::optional<DailySummary> read(Date midnight) const;
  // Replaces the file of the record's own day. Yields what went wrong, in words, or nothing.
  std::optional<std::string> write(const DailySummary& summary);

 private:
  platform::HistoryFolder& storage_;
  platform::Calendar& calendar_;
  mutable std::function<std::string(Date)> dayFileFormatter_;
};

}  // namespace kestrune
