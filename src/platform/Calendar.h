#pragma once

#include <functional>
#include <optional>
#include <string>

#include "runtime/Date.h"

namespace kestrune::platform {

// The user's calendar in the user's time zone. Main thread.
class Calendar {
 public:
  virtual ~Calendar() = default;
  // The first instant of the day that `date` lies in; not always midnight.
  virtual Date startOfDay(Date date) = 0;
  // The same time of day, so many days on or back; the nearest that exists where a day lacks it. Absent: out
  // of range.
  virtual std::optional<Date> addingDays(Date date, int days) = 0;
  // What the clock on the wall shows, in seconds after 0:00: 0 to 86399.
  virtual int secondOfDay(Date date) = 0;
  // Its hour, 0 to 23.
  int hour(Date date) { return secondOfDay(date) / 3600; }
  // Writes the day that a date lies in, as "2026-05-09", in the time zone as it stands now: what it yields
  // stays with that zone, and may outlive the calendar. The text is fit for the name of a file.
  virtual std::function<std::string(Date)> dayFormatter() = 0;
};

}  // namespace kestrune::platform
