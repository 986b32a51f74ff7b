#include "platform/linux/files/Files.h"

#include <array>
#include <cerrno>
#include <climits>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/linux/files/Text.h"
#include "platform/linux/files/UniqueFd.h"

namespace kestrune::platform {

std::string below(const std::string& root, std::string_view path) {
  std::string joined = root;
  if (!joined.ends_with('/')) joined += '/';
  return joined += path;
}

ssize_t readSome(int fd, std::span<char> buffer) {
  while (true) {
    const ssize_t size = read(fd, buffer.data(), buffer.size());
    if (size >= 0 || errno != EINTR) return size;
  }
}

std::optional<std::string> readFile(const std::string& path, std::size_t limit) {
  const UniqueFd file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
  if (!file) return std::nullopt;
  std::string text;
  std::size_t size = 0;
  while (true) {
    text.resize(size + 16384);
    const ssize_t more = readSome(file.get(), std::span(text).subspan(size));
    if (more < 0) return std::nullopt;
    size += static_cast<std::size_t>(more);
    if (size > limit) return std::nullopt;
    if (more == 0) break;
  }
  text.resize(size);
  return text;
}

std::string readText(const std::string& path) {
  const std::string text = readFile(path).value_or(std::string());
  return std::string(trimmed(std::string_view(text).substr(0, text.find('\0'))));
}

std::string readLink(const std::string& path) {
  std::array<char, PATH_MAX> target{};
  const ssize_t size = readlink(path.c_str(), target.data(), target.size());
  return size <= 0 ? std::string() : std::string(target.data(), static_cast<std::size_t>(size));
}

std::chrono::nanoseconds changeTime(const std::string& path) {
  struct stat info {};
  if (stat(path.c_str(), &info) != 0) return {};
  return std::chrono::seconds(info.st_mtim.tv_sec) + std::chrono::nanoseconds(info.st_mtim.tv_nsec);
}

std::string_view baseName(std::string_view path) {
  return path.substr(path.rfind('/') + 1);  // npos + 1 is 0
}

}  // namespace kestrune::platform
