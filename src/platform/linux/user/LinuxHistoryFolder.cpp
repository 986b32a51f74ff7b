#include "platform/linux/user/LinuxHistoryFolder.h"

#include <cstddef>
#include <filesystem>
#include <system_error>

#include "platform/linux/files/AtomicFile.h"
#include "platform/linux/files/Files.h"

namespace kestrune::platform {
namespace {

constexpr std::size_t maxFileBytes = std::size_t{64} << 20U;

}  // namespace

LinuxHistoryFolder::LinuxHistoryFolder(const std::string& dataDirectory)
    : folder_(dataDirectory.empty() ? dataDirectory : below(dataDirectory, "Kestrune/history")) {}

std::optional<std::string> LinuxHistoryFolder::read(const std::string& name) {
  return exists(name) ? readFile(below(folder_, name), maxFileBytes) : std::nullopt;
}

bool LinuxHistoryFolder::exists(const std::string& name) {
  std::error_code ignored;
  return !folder_.empty() && std::filesystem::is_regular_file(below(folder_, name), ignored);
}

std::optional<std::string> LinuxHistoryFolder::write(const std::string& name, const std::string& content) {
  if (folder_.empty()) return "there is no folder for the user's data";
  const auto error = replaceFile(below(folder_, name), content);
  return error ? std::optional(error.message()) : std::nullopt;
}

}  // namespace kestrune::platform
