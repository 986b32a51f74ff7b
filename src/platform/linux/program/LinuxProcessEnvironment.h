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

// The user's folders for settings and for data: XDG_CONFIG_HOME and XDG_DATA_HOME if they are absolute paths,
// else .config and .local/share in the home folder. Empty if there is no home folder either.
std::string configDirectory(ProcessEnvironment& environment);
std::string dataDirectory(ProcessEnvironment& environment);

}  // namespace kestrune::platform
