#pragma once

#include <optional>

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
};

}  // namespace kestrune::platform
