#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace kestrune::platform {

// The fields of /proc/PID/stat that are needed here. Times are in the C library's clock ticks.
struct PidStat {
  std::string_view name;  // part of the parsed text; at most 15 bytes, except for kernel threads
  bool isKernelThread = false;
  std::uint64_t userTicks = 0;
  std::uint64_t systemTicks = 0;
  std::uint64_t startTime = 0;  // since boot; differs if a process id is used again
  std::uint64_t residentPages = 0;
};

// Absent: the text is invalid, or ends before the last of these fields does.
std::optional<PidStat> parsePidStat(std::string_view text);

// The full form of `name`, which the kernel truncates to 15 bytes: the file name of the executable, or else
// of the program or the script on the command line, whose arguments end with NULs. `name` itself if none
// begins with it.
std::string_view completedName(std::string_view name, std::string_view executablePath,
                               std::string_view commandLine);

// True if the kernel may have truncated the name.
constexpr bool mayBeTruncated(std::string_view name) {
  return name.size() == 15;
}

}  // namespace kestrune::platform
