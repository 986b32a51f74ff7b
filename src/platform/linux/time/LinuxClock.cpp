#include "platform/linux/time/LinuxClock.h"

#include <cstdint>
#include <ctime>

namespace kestrune::platform {
namespace {

std::chrono::nanoseconds read(clockid_t clock) {
  timespec time{};
  clock_gettime(clock, &time);
  return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

}  // namespace

Date LinuxClock::now() const {
  constexpr std::chrono::seconds reference(static_cast<std::int64_t>(unixTimeOfReferenceDate));
  return {std::chrono::duration<double>(read(CLOCK_REALTIME) - reference).count()};
}

ContinuousTime LinuxClock::continuousNow() const {
  return read(CLOCK_BOOTTIME);
}

}  // namespace kestrune::platform
