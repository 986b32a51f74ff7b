#include "platform/linux/processes/ProcessFiles.h"

#include "platform/linux/files/Files.h"

namespace kestrune::platform {

std::string processFile(const std::string& root, std::int32_t pid, std::string_view file) {
  return (below(root, "proc/") += std::to_string(pid) + "/") += file;
}

std::string executableOf(const std::string& root, std::int32_t pid) {
  return std::string(withoutDeleted(readLink(processFile(root, pid, "exe"))));
}

std::string_view withoutDeleted(std::string_view path) {
  constexpr std::string_view mark = " (deleted)";
  if (path.ends_with(mark)) path.remove_suffix(mark.size());
  return path;
}

}  // namespace kestrune::platform
