#include "platform/linux/LinuxSystemFacts.h"

#include <chrono>
#include <ctime>

namespace kestrune::linux_platform {
namespace {

using namespace std::chrono;

std::optional<nanoseconds> read(clockid_t clock) {
  timespec time{};
  if (clock_gettime(clock, &time) != 0) return std::nullopt;
  return seconds(time.tv_sec) + nanoseconds(time.tv_nsec);
}

}  // namespace

std::optional<std::int64_t> LinuxSystemFacts::bootTime() {
  const auto wall = read(CLOCK_REALTIME);
  const auto sinceBoot = read(CLOCK_BOOTTIME);
  if (!wall || !sinceBoot) return std::nullopt;
  return floor<seconds>(*wall - *sinceBoot).count();
}

}  // namespace kestrune::linux_platform
