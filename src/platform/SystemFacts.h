#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace kestrune::platform {

// Main thread.
class SystemFacts {
 public:
  virtual ~SystemFacts() = default;
  // When the machine booted, in whole seconds since 1970-01-01T00:00:00Z. Absent: unknown.
  virtual std::optional<std::int64_t> bootTime() = 0;
  // The operating system and its version, as one line for display.
  virtual std::string operatingSystemVersion() = 0;
  // The user's languages, preferred first: "es_MX", "es".
  virtual std::vector<std::string> languages() = 0;
};

}  // namespace kestrune::platform
