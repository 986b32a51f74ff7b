#pragma once

#include "platform/ToolRunner.h"

namespace kestrune::platform {

// A program that is run has nothing on its standard input, this process's environment, no other open files of
// it, and all signals as they are by default. What it says on its standard error is dropped, and so is what
// goes beyond 1 MiB on its standard output. Its exit status doesn't matter.
class LinuxToolRunner final : public ToolRunner {
 public:
  bool isExecutableFile(const std::string& path) override;
  // Also waits for those that the program leaves behind with its output open.
  std::optional<std::string> run(const std::string& path, const std::vector<std::string>& arguments) override;
};

}  // namespace kestrune::platform
