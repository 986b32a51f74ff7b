#include "platform/linux/files/AtomicFile.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <random>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/linux/files/UniqueFd.h"

namespace kestrune::platform {
namespace {

namespace fs = std::filesystem;

std::error_code lastError() {
  return {errno, std::system_category()};
}

std::error_code makeFolders(const fs::path& folder) {
  std::error_code ignored;
  if (folder.empty() || fs::is_directory(folder, ignored)) return {};
  if (const auto error = makeFolders(folder.parent_path())) return error;
  if (mkdir(folder.c_str(), S_IRWXU) == 0 || errno == EEXIST) return {};
  return lastError();
}

// On failure `errno` has the reason.
bool writeAll(int fd, std::string_view content) {
  while (!content.empty()) {
    const ssize_t written = write(fd, content.data(), content.size());
    if (written < 0 && errno == EINTR) continue;
    if (written < 0) return false;
    content.remove_prefix(static_cast<std::size_t>(written));
  }
  return true;
}

// On failure `errno` has the reason: EEXIST if the name is taken.
bool renameUnlessTaken(const std::string& from, const std::string& to) {
  if (renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) return true;
  if (errno != EINVAL && errno != ENOSYS) return false;
  // This file system can't do it in one step.
  struct stat existing {};
  if (lstat(to.c_str(), &existing) == 0) {
    errno = EEXIST;
    return false;
  }
  return std::rename(from.c_str(), to.c_str()) == 0;
}

// A temporary file beside the file that it will replace.
struct Temporary {
  std::string name;  // empty: it has none yet
  std::error_code error;
};

bool isOnDisk(int fd, std::string_view content) {
  return writeAll(fd, content) && fsync(fd) == 0;
}

// The file gets its name only when it is complete, just before it replaces the other, so that a program that
// is killed hardly ever leaves one behind. Absent: the file system can't do that.
std::optional<Temporary> writtenBeforeNamed(const fs::path& folder, const std::string& path,
                                            std::string_view content) {
  constexpr int maxTries = 16;
  const UniqueFd file(open(folder.c_str(), O_TMPFILE | O_WRONLY | O_CLOEXEC, S_IRUSR | S_IWUSR));
  if (!file) return std::nullopt;
  if (!isOnDisk(file.get(), content)) return Temporary{.name = {}, .error = lastError()};
  const std::string unnamed = "/proc/self/fd/" + std::to_string(file.get());
  std::random_device random;
  for (int i = 0; i < maxTries; ++i) {
    std::string name = path + "." + std::to_string(random());
    if (linkat(AT_FDCWD, unnamed.c_str(), AT_FDCWD, name.c_str(), AT_SYMLINK_FOLLOW) == 0) {
      return Temporary{.name = std::move(name), .error = {}};
    }
    if (errno != EEXIST) break;
  }
  return std::nullopt;
}

Temporary writtenUnderName(const std::string& path, std::string_view content) {
  std::string name = path + ".XXXXXX";
  const UniqueFd file(mkostemp(name.data(), O_CLOEXEC));  // with mode 0600
  if (!file) return {.name = {}, .error = lastError()};
  const auto error = isOnDisk(file.get(), content) ? std::error_code() : lastError();
  return {.name = std::move(name), .error = error};
}

void syncFolder(const fs::path& folder) {
  const UniqueFd opened(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (opened) fsync(opened.get());
}

}  // namespace

std::error_code replaceFile(const std::string& path, std::string_view content) {
  const fs::path folder = fs::path(path).parent_path();
  if (const auto error = makeFolders(folder)) return error;
  auto temporary = writtenBeforeNamed(folder, path, content);
  if (!temporary) temporary = writtenUnderName(path, content);
  if (!temporary->error && std::rename(temporary->name.c_str(), path.c_str()) != 0) {
    temporary->error = lastError();
  }
  if (temporary->error) {
    if (!temporary->name.empty()) unlink(temporary->name.c_str());
    return temporary->error;
  }
  syncFolder(folder);
  return {};
}

std::optional<std::string> renameToFreeName(const std::string& from, const std::string& to) {
  constexpr int maxNames = 1000;
  for (int i = 1; i <= maxNames; ++i) {
    std::string name = i == 1 ? to : to + "." + std::to_string(i);
    if (renameUnlessTaken(from, name)) return name;
    if (errno != EEXIST) break;
  }
  return std::nullopt;
}

std::string linkTarget(const std::string& path) {
  constexpr int maxLinks = 40;
  fs::path target = path;
  std::error_code error;
  for (int i = 0; i < maxLinks && fs::is_symlink(target, error); ++i) {
    const fs::path next = fs::read_symlink(target, error);
    if (error) break;
    target = target.parent_path() / next;  // an absolute `next` replaces all of it
  }
  return target.string();
}

}  // namespace kestrune::platform
