#pragma once

#include <optional>
#include <string>
#include <vector>

namespace kestrune::platform {

// True for a regular file, links followed, that this process may execute.
bool isExecutableFile(const std::string& path);

// Runs another program, without a shell, and returns what it wrote to its standard output, up to 1 MiB.
// Absent: it couldn't be started. It gets this process's environment, an empty standard input, no other open
// files and default signal handling; its standard error and its exit status are ignored. Waits without a
// timeout, also for processes that the program leaves behind with its output open. Any thread but the main
// one; several at a time.
std::optional<std::string> runTool(const std::string& path, const std::vector<std::string>& arguments);

}  // namespace kestrune::platform
