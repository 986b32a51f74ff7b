#pragma once

#include "platform/Calendar.h"

namespace kestrune::platform {

// The Gregorian calendar in the C library's time zone, a change of which is noticed at the next call. Days
// may have 23 or 25 hours, or no midnight: then they begin when the clock has jumped over it. Of a time of
// day that comes twice the first is taken. A date beyond what the C library can tell is its own start of day,
// where the clock shows 0:00.
class LinuxCalendar final : public Calendar {
 public:
  Date startOfDay(Date date) override;
  std::optional<Date> addingDays(Date date, int days) override;
  int secondOfDay(Date date) override;
  std::function<std::string(Date)> dayFormatter() override;
};

}  // namespace kestrune::platform
