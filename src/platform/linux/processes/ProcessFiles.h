#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace kestrune::platform {

// The path of proc/PID/`file` below `root`.
std::string processFile(const std::string& root, std::int32_t pid, std::string_view file);

// The path of the program that a process runs, even if the file has been deleted. Empty: the process has
// ended, is a kernel thread, or may not be inspected.
std::string executableOf(const std::string& root, std::int32_t pid);

// Without the mark that the kernel appends to the path of a deleted file.
std::string_view withoutDeleted(std::string_view path);

}  // namespace kestrune::platform
