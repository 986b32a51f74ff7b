#include "platform/linux/LinuxSystemFacts.h"

#include <chrono>
#include <ctime>
#include <string_view>

#include "platform/linux/applications/DesktopEntry.h"
#include "platform/linux/files/Files.h"
#include "platform/linux/files/Text.h"
#include "runtime/Utf8.h"

namespace kestrune::platform {
namespace {

using namespace std::chrono;

std::optional<nanoseconds> read(clockid_t clock) {
  timespec time{};
  if (clock_gettime(clock, &time) != 0) return std::nullopt;
  return seconds(time.tv_sec) + nanoseconds(time.tv_nsec);
}

std::string unquoted(std::string_view value) {
  const bool isQuoted = value.size() >= 2 && value.front() == '"' && value.back() == '"';
  return std::string(isQuoted ? value.substr(1, value.size() - 2) : value);
}

}  // namespace

std::optional<std::int64_t> LinuxSystemFacts::bootTime() {
  const auto wall = read(CLOCK_REALTIME);
  const auto sinceBoot = read(CLOCK_BOOTTIME);
  if (!wall || !sinceBoot) return std::nullopt;
  return floor<seconds>(*wall - *sinceBoot).count();
}

std::string LinuxSystemFacts::operatingSystemVersion() {
  std::string name;
  for (const char* path : {"etc/os-release", "usr/lib/os-release"}) {
    if (!name.empty()) break;
    name = unquoted(lineAfter(readFile(below(root_, path)).value_or(""), "PRETTY_NAME="));
  }
  const std::string kernel = readText(below(root_, "proc/sys/kernel/osrelease"));
  if (name.empty() || kernel.empty()) return repairedUtf8(name + kernel);
  return repairedUtf8(name + " · " + kernel);
}

std::vector<std::string> LinuxSystemFacts::languages() {
  return userLanguages(environment_);
}

}  // namespace kestrune::platform
