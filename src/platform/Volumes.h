#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace kestrune::platform {

struct VolumeCapacity {
  std::uint64_t totalBytes = 0;
  std::uint64_t freeBytes = 0;  // available to the user
};

// Mounted file systems. Main thread.
class Volumes {
 public:
  virtual ~Volumes() = default;
  // The name of the volume at `path`, as bytes. Absent: it has none, or the read failed.
  virtual std::optional<std::string> name(const std::string& path) = 0;
  // Absent: the read failed.
  virtual std::optional<VolumeCapacity> capacity(const std::string& path) = 0;
};

}  // namespace kestrune::platform
