#pragma once

#include <string>
#include <vector>

namespace kestrune::platform {

// The names in a directory, sorted, without "." and ".."; none where it can't be read.
std::vector<std::string> entryNames(const std::string& path);

// Whether there is anything at the path, be it a link that leads nowhere.
bool exists(const std::string& path);

}  // namespace kestrune::platform
