#pragma once

#include <optional>
#include <string>
#include <vector>

namespace kestrune::platform {

// Runs other programs, without a shell. Any thread but the main one; several at a time.
class ToolRunner {
 public:
  virtual ~ToolRunner() = default;
  virtual bool isExecutableFile(const std::string& path) = 0;
  // Waits for the program to end, for as long as that takes, and yields all bytes of its standard output.
  // Absent: it could not be started.
  virtual std::optional<std::string> run(const std::string& path,
                                         const std::vector<std::string>& arguments) = 0;
};

}  // namespace kestrune::platform
