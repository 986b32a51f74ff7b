#pragma once

#include <cstdint>
#include <optional>

namespace kestrune::platform {

// The physical memory in use, in bytes: all of it is the sum of the three.
struct MemoryUsage {
  std::uint64_t wiredBytes = 0;       // neither of the two below
  std::uint64_t activeBytes = 0;      // anonymous and shared memory of programs
  std::uint64_t compressedBytes = 0;  // what compressed memory takes up
};

struct SwapUsage {
  std::uint64_t totalBytes = 0;
  std::uint64_t usedBytes = 0;
};

// Physical memory and swap. Absent: the read failed. Main thread.
class Memory {
 public:
  virtual ~Memory() = default;
  virtual std::optional<MemoryUsage> usage() = 0;
  virtual std::optional<SwapUsage> swapUsage() = 0;
  virtual std::optional<std::uint64_t> physicalBytes() = 0;
};

}  // namespace kestrune::platform
