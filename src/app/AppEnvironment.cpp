#include "app/AppEnvironment.h"

#include <chrono>

#include "providers/ProcessScanCache.h"

namespace kestrune {

using namespace std::chrono_literals;

AppEnvironment::AppEnvironment(MainLoop& loop, const platform::Platform& platform)
    : cpu(std::make_shared<CPUProvider>(
          loop, platform.processors, platform.chip,
          std::make_shared<ProcessScanCache>(platform.clock, platform.processTable, *platform.processLane))),
      clock_(platform.clock),
      calendar_(platform.calendar) {
  cpu->start(1s);
}

void AppEnvironment::shiftSelectedDate(int days) {
  const Date today = calendar_.startOfDay(clock_.now());
  const Date base = selectedDate->value_or(today);
  const Date target = calendar_.addingDays(base, days).value_or(base);
  selectedDate.set(target < today ? std::optional(target) : std::nullopt);
}

}  // namespace kestrune
