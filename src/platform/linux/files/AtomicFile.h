#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <system_error>

namespace kestrune::platform {

// Replaces the file in one step, readable by the user alone; missing folders are made, likewise. When it
// yields no error the new content is on the disk, else the file is as it was.
std::error_code replaceFile(const std::string& path, std::string_view content);

// Renames the file to `to`, or where there is something to `to`.2, `to`.3 and so on, and never replaces
// another one. The new name; absent: the file still has its old one.
std::optional<std::string> renameToFreeName(const std::string& from, const std::string& to);

// Where a chain of symbolic links ends, whether or not anything is there; `path` itself if it is no link.
std::string linkTarget(const std::string& path);

}  // namespace kestrune::platform
