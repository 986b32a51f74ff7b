#pragma once

#include <optional>
#include <string>

namespace kestrune::platform {

// Whether the program starts with the user's session. Main thread.
class LoginItem {
 public:
  virtual ~LoginItem() = default;
  virtual bool isEnabled() = 0;
  // Both return a description of the failure, or nothing.
  virtual std::optional<std::string> registerItem() = 0;
  virtual std::optional<std::string> unregisterItem() = 0;
};

}  // namespace kestrune::platform
