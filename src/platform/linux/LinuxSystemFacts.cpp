#include "platform/linux/LinuxSystemFacts.h"

#include <algorithm>
#include <chrono>
#include <ctime>
#include <string_view>

#include "platform/linux/applications/UserLanguages.h"
#include "platform/linux/files/Files.h"
#include "runtime/Utf8.h"

namespace kestrune::platform {
namespace {

using namespace std::chrono;

std::optional<nanoseconds> read(clockid_t clock) {
  timespec time{};
  if (clock_gettime(clock, &time) != 0) return std::nullopt;
  return seconds(time.tv_sec) + nanoseconds(time.tv_nsec);
}

// The value of NAME=value or NAME="value" in a file of such lines; empty: there is none.
std::string valueOf(std::string_view name, std::string_view text) {
  for (std::size_t start = 0; start < text.size();) {
    const auto end = std::min(text.find('\n', start), text.size());
    std::string_view line = text.substr(start, end - start);
    start = end + 1;
    if (!line.starts_with(name) || line.substr(name.size(), 1) != "=") continue;
    line.remove_prefix(name.size() + 1);
    if (line.size() >= 2 && line.front() == '"' && line.back() == '"') line = line.substr(1, line.size() - 2);
    return std::string(line);
  }
  return {};
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
    if (name.empty()) name = valueOf("PRETTY_NAME", readFile(below(root_, path)).value_or(""));
  }
  std::string kernel = readFile(below(root_, "proc/sys/kernel/osrelease")).value_or("");
  kernel.resize(std::min(kernel.find('\n'), kernel.size()));
  if (name.empty() || kernel.empty()) return repairedUtf8(name + kernel);
  return repairedUtf8(name + " · " + kernel);
}

std::vector<std::string> LinuxSystemFacts::languages() {
  return userLanguages(environment_);
}

}  // namespace kestrune::platform
