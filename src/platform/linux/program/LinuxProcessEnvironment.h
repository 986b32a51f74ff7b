#pragma once

#include <map>
#include <optional>
#include <string>

#include "platform/ProcessEnvironment.h"

namespace kestrune::platform {

// A copy of the environment, taken by the constructor.
class LinuxProcessEnvironment final : public ProcessEnvironment {
 public:
  LinuxProcessEnvironment();

  bool isEmpty() override { return variables_.empty(); }
  std::optional<std::string> variable(const std::string& name) override;

 private:
  std::map<std::string, std::string> variables_;
};

}  // namespace kestrune::platform
