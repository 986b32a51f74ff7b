#pragma once

#include <functional>
#include <optional>
#include <string>

#include "history/DailySummary.h"
#include "platform/Calendar.h"
#include "platform/HistoryFolder.h"

namespace kestrune {

// The files in the history folder: one for each day on which the program ran. Main thread.
class DayFiles {
 public:
  // Both must outlive it.
  DayFiles(platform::HistoryFolder& storage, platform::Calendar& calendar)
      : storage_(storage), calendar_(calendar) {}

  // "2026-05-09.json" for the day that starts then, in the time zone that was set when the first name was
  // made.
  std::string name(Date midnight) const;
  // The same without the extension.
  std::string dayName(Date midnight) const;
  // True if there is a file, damaged or not.
  bool exists(Date midnight) const { return storage_.exists(name(midnight)); }
  // Absent if the file is missing, unreadable or damaged.
  std::optional<DailySummary> read(Date midnight) const;
  // Replaces the file of the record's own day. Returns an error message, or nothing.
  std::optional<std::string> write(const DailySummary& summary);

 private:
  platform::HistoryFolder& storage_;
  platform::Calendar& calendar_;
  mutable std::function<std::string(Date)> dayFileFormatter_;
};

}  // namespace kestrune
