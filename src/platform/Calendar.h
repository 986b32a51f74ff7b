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
  // The first instant of the day that contains `date`; not always midnight.
  virtual Date startOfDay(Date date) = 0;
  // The same time of day `days` later (or earlier). If that day skips it, the nearest time that exists.
  // Absent: out of range.
  virtual std::optional<Date> addingDays(Date date, int days) = 0;
  // The local time in seconds after 0:00: 0 to 86399.
  virtual int secondOfDay(Date date) = 0;
  // 0 to 23.
  int hour(Date date) { return secondOfDay(date) / 3600; }
  // Returns a function that formats the day of a date as "2026-05-09", which is fit for a file name. The
  // function keeps the current time zone and may outlive the calendar.
  virtual std::function<std::string(Date)> dayFormatter() = 0;
};

}  // namespace kestrune::platform
