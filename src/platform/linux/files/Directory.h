#pragma once

#include <string>
#include <vector>

namespace kestrune::platform {

// The names in a directory, sorted, without "." and "..". Empty if it can't be read.
std::vector<std::string> entryNames(const std::string& path);

// True if there is anything at the path, even a link that leads nowhere.
bool exists(const std::string& path);

// True if the path leads to a directory, links followed.
bool isDirectory(const std::string& path);

}  // namespace kestrune::platform
