#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <system_error>

namespace kestrune::platform {

// Replaces the file in one step, and creates missing folders; both are readable by the user alone. If there
// is no error the new content is on the disk, otherwise the file is unchanged.
std::error_code replaceFile(const std::string& path, std::string_view content);

// Renames the file to `to`, or if that exists to `to`.2, `to`.3 and so on, and never replaces another file.
// Returns the new name. Absent: the file still has its old name.
std::optional<std::string> renameToFreeName(const std::string& from, const std::string& to);

// The end of a chain of symbolic links, whether or not it exists; `path` itself if it isn't a link.
std::string linkTarget(const std::string& path);

}  // namespace kestrune::platform
