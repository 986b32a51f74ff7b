#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace kestrune::platform {

// What /proc/PID/stat says, as far as it is of use.
struct PidStat {
  std::string_view name;  // bytes of the text that was parsed; at most 15, except for threads of the kernel
  bool isKernelThread = false;
  std::uint64_t userTicks = 0;    // of the C library's clock tick
  std::uint64_t systemTicks = 0;  // likewise
  std::uint64_t startTime =
      0;  // in those ticks since the machine started; a process id comes back with another one
  std::uint64_t residentPages = 0;
};

// Absent: the text is garbled, or ends within a figure that is needed.
std::optional<PidStat> parsePidStat(std::string_view text);

// `name`, cut off by the kernel at 15 bytes, in full: as the executable is called, or else the program or the
// script named on the command line, whose arguments end with zero bytes. `name` itself where none of them
// begins with it.
std::string_view completedName(std::string_view name, std::string_view executablePath,
                               std::string_view commandLine);

// Whether the kernel may have cut the name off.
constexpr bool mayBeCut(std::string_view name) {
  return name.size() == 15;
}

}  // namespace kestrune::platform
