#pragma once

#include "platform/Calendar.h"

namespace kestrune::platform {

// The Gregorian calendar in the C library's time zone; a change of the zone takes effect at the next call.
// Days may have 23 or 25 hours, or no midnight: such a day starts when the clock has skipped it. If a time of
// day comes twice, the first is taken. A date out of the C library's range is its own start of day, at 0:00.
class LinuxCalendar final : public Calendar {
 public:
  Date startOfDay(Date date) override;
  std::optional<Date> addingDays(Date date, int days) override;
  int secondOfDay(Date date) override;
  std::function<std::string(Date)> dayFormatter() override;
};

}  // namespace kestrune::platform
