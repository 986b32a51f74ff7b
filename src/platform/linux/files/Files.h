#pragma once

#include <chrono>
#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include <sys/types.h>

namespace kestrune::platform {

// `path`, which has no leading slash, below the directory `root`.
std::string below(const std::string& root, std::string_view path);

// Like read(2), repeated if a signal interrupts it.
ssize_t readSome(int fd, std::span<char> buffer);

// The whole file, even one of the kernel's, which report no size. Absent: it can't be read or is larger than
// `limit` bytes. Never waits for a writer.
std::optional<std::string> readFile(const std::string& path, std::size_t limit = std::size_t{1} << 20U);

// The file's text up to the first NUL, without blanks at either end. Empty if it can't be read.
std::string readText(const std::string& path);

// The target of the symbolic link, as stored in it. Empty if it can't be read.
std::string readLink(const std::string& path);

// When the content of a file or the list of a directory last changed, since 1970; 0 if it can't be read.
std::chrono::nanoseconds changeTime(const std::string& path);

// What follows the last slash.
std::string_view baseName(std::string_view path);

}  // namespace kestrune::platform
