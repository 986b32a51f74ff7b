#include "platform/linux/files/OpenDirectory.h"

#include <algorithm>
#include <climits>
#include <string>

#include <fcntl.h>

namespace kestrune::platform {
namespace {

UniqueFd openBelow(int directory, std::string_view path, int flags) {
  const std::string terminated(path);
  return UniqueFd(openat(directory, terminated.c_str(), flags | O_DIRECTORY | O_CLOEXEC));
}

}  // namespace

UniqueFd openDirectory(std::string_view path, int flags) {
  UniqueFd at;
  while (path.size() >= PATH_MAX) {
    const auto slash = path.rfind('/', PATH_MAX - 1);
    if (slash == std::string_view::npos || slash == 0) return {};  // no name is that long
    at = openBelow(at ? at.get() : AT_FDCWD, path.substr(0, slash), O_PATH);
    if (!at) return {};
    path.remove_prefix(std::min(path.find_first_not_of('/', slash), path.size()));
  }
  return openBelow(at ? at.get() : AT_FDCWD, path.empty() ? "." : path, flags);
}

std::optional<struct statx> statEntry(int directory, const char* name, unsigned mask) {
  struct statx info {};
  constexpr int itself = AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT;
  if (statx(directory, name, itself, mask, &info) != 0) return std::nullopt;
  return info;
}

}  // namespace kestrune::platform
