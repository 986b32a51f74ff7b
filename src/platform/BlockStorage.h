#pragma once

#include <cstdint>
#include <optional>
#include <vector>

namespace kestrune::platform {

// Cumulative bytes that one drive has moved. Absent: the drive doesn't report the figure.
struct BlockDriver {
  std::optional<std::uint64_t> bytesRead;
  std::optional<std::uint64_t> bytesWritten;
};

// The drives of the machine. Main thread.
class BlockStorage {
 public:
  virtual ~BlockStorage() = default;
  // One entry for each drive that can be read. Drives made of other drives are left out, so that no byte
  // counts twice. Absent: the list can't be read.
  virtual std::optional<std::vector<BlockDriver>> blockDrivers() = 0;
};

}  // namespace kestrune::platform
