#pragma once

#include "platform/ToolRunner.h"

namespace kestrune::platform {

// Programs run with an empty standard input, this process's environment, no inherited files and default
// signal handling. Standard error is discarded, and so is standard output beyond 1 MiB. The exit status is
// ignored.
class LinuxToolRunner final : public ToolRunner {
 public:
  bool isExecutableFile(const std::string& path) override;
  // Also waits for processes that the program leaves behind with its output open.
  std::optional<std::string> run(const std::string& path, const std::vector<std::string>& arguments) override;
};

}  // namespace kestrune::platform
