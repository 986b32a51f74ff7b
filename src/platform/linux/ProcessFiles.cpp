#include "platform/linux/ProcessFiles.h"

#include <array>
#include <climits>
#include <cstddef>

#include <unistd.h>

#include "platform/linux/Files.h"

namespace kestrune::linux_platform {

std::string processFile(const std::string& root, std::int32_t pid, std::string_view file) {
  return (below(root, "proc/") += std::to_string(pid) + "/") += file;
}

std::string executableOf(const std::string& root, std::int32_t pid) {
  std::array<char, PATH_MAX> target{};
  const ssize_t size = readlink(processFile(root, pid, "exe").c_str(), target.data(), target.size());
  if (size <= 0) return {};
  return std::string(withoutDeleted({target.data(), static_cast<std::size_t>(size)}));
}

std::string_view withoutDeleted(std::string_view path) {
  constexpr std::string_view mark = " (deleted)";
  if (path.ends_with(mark)) path.remove_suffix(mark.size());
  return path;
}

}  // namespace kestrune::linux_platform
