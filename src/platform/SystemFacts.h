#pragma once

#include <cstdint>
#include <optional>

namespace kestrune::platform {

// Main thread.
class SystemFacts {
 public:
  virtual ~SystemFacts() = default;
  // When the machine was started, in whole seconds since 1970-01-01T00:00:00Z. Absent: unknown.
  virtual std::optional<std::int64_t> bootTime() = 0;
};

}  // namespace kestrune::platform
