#pragma once

#include <optional>
#include <string>

namespace kestrune::platform {

// The environment variables that the process was started with.
class ProcessEnvironment {
 public:
  virtual ~ProcessEnvironment() = default;
  virtual bool isEmpty() = 0;
  virtual std::optional<std::string> variable(const std::string& name) = 0;
};

}  // namespace kestrune::platform
