#pragma once

#include <cstdint>
#include <optional>

namespace kestrune::platform {

// Counts of pages; their size is `Memory::pageSize`.
struct VirtualMemoryPages {
  std::uint64_t wired = 0;       // in use, and neither of the two below
  std::uint64_t active = 0;      // anonymous and shared memory of programs
  std::uint64_t compressed = 0;  // what the compressor itself takes up
};

struct SwapUsage {
  std::uint64_t totalBytes = 0;
  std::uint64_t usedBytes = 0;
};

// The counters of physical memory and swap. Main thread.
class Memory {
 public:
  virtual ~Memory() = default;
  // Absent: the read failed. The three together are what is in use.
  virtual std::optional<VirtualMemoryPages> virtualMemoryPages() = 0;
  // Bytes; 0 where it is unknown.
  virtual std::uint64_t pageSize() = 0;
  // Absent: the read failed.
  virtual std::optional<SwapUsage> swapUsage() = 0;
  // Bytes of physical memory; absent: the read failed.
  virtual std::optional<std::uint64_t> physicalBytes() = 0;
};

}  // namespace kestrune::platform
