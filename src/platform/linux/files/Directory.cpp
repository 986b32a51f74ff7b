#include "platform/linux/files/Directory.h"

#include <algorithm>
#include <memory>
#include <string_view>

#include <dirent.h>
#include <sys/stat.h>

namespace kestrune::platform {

std::vector<std::string> entryNames(const std::string& path) {
  std::vector<std::string> names;
  const std::unique_ptr<DIR, int (*)(DIR*)> directory(opendir(path.c_str()), closedir);
  if (!directory) return names;
  while (const dirent* entry = readdir(directory.get())) {
    const std::string_view name(static_cast<const char*>(entry->d_name));
    if (name != "." && name != "..") names.emplace_back(name);
  }
  std::ranges::sort(names);
  return names;
}

bool exists(const std::string& path) {
  struct stat info {};
  return lstat(path.c_str(), &info) == 0;
}

bool isDirectory(const std::string& path) {
  struct stat info {};
  return stat(path.c_str(), &info) == 0 && S_ISDIR(info.st_mode);
}

}  // namespace kestrune::platform
