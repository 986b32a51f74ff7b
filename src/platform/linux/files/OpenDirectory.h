#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string_view>

#include <dirent.h>
#include <sys/stat.h>

#include "platform/linux/files/UniqueFd.h"

namespace kestrune::platform {

// Opens the directory at an absolute path, which may be longer than the kernel's limit for one call. Links
// are followed. The flags are those of open(2), in addition to O_DIRECTORY and O_CLOEXEC. Empty: it can't be
// opened.
UniqueFd openDirectory(std::string_view path, int flags);

// The state of an entry, or of a link itself; `mask` is that of statx(2). Mounts nothing. Absent: it doesn't
// exist or can't be read.
std::optional<struct statx> statEntry(int directory, const char* name, unsigned mask);

enum class ReadEnd { complete, stopped, failed };

// Calls `each(name, type)` for each entry of an open directory except "." and "..", in the file system's
// order, until it returns false. The type is a DT_ constant, DT_UNKNOWN if the file system doesn't report it.
// The buffer is aligned like allocated memory; its size decides how much is read at once.
template <class Each>
ReadEnd forEachEntry(int directory, std::span<char> buffer, Each each) {
  while (true) {
    const ssize_t size = getdents64(directory, buffer.data(), buffer.size());
    if (size <= 0) return size == 0 ? ReadEnd::complete : ReadEnd::failed;
    for (std::size_t offset = 0; offset < static_cast<std::size_t>(size);) {
      const auto* entry = reinterpret_cast<const dirent64*>(&buffer[offset]);
      offset += entry->d_reclen;
      const char* name = &entry->d_name[0];
      const bool isSelfOrParent = name[0] == '.' && (name[1] == 0 || (name[1] == '.' && name[2] == 0));
      if (!isSelfOrParent && !each(name, entry->d_type)) return ReadEnd::stopped;
    }
  }
}

}  // namespace kestrune::platform
