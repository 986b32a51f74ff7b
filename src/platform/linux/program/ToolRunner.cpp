#include "platform/linux/program/ToolRunner.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "platform/linux/files/Files.h"
#include "platform/linux/files/UniqueFd.h"

namespace kestrune::platform {
namespace {

constexpr std::size_t maxOutputBytes = std::size_t{1} << 20U;

struct Pipe {
  UniqueFd readEnd;
  UniqueFd writeEnd;
};

// If this process runs without its standard files, a pipe may get their numbers, which would collide in the
// child.
UniqueFd aboveStandardFiles(UniqueFd file) {
  if (file.get() > STDERR_FILENO) return file;
  return UniqueFd(fcntl(file.get(), F_DUPFD_CLOEXEC, STDERR_FILENO + 1));
}

std::optional<Pipe> makePipe() {
  std::array<int, 2> ends{};
  if (pipe2(ends.data(), O_CLOEXEC) != 0) return std::nullopt;
  Pipe pipe;
  pipe.readEnd = UniqueFd(ends[0]);
  pipe.writeEnd = aboveStandardFiles(UniqueFd(ends[1]));
  return pipe.writeEnd ? std::optional(std::move(pipe)) : std::nullopt;
}

// A child starts with three files and default signal handling.
class SpawnSettings {
 public:
  SpawnSettings(int output, int errors) {
    posix_spawn_file_actions_init(&files_);
    posix_spawnattr_init(&attributes_);
    check(posix_spawn_file_actions_adddup2(&files_, output, STDOUT_FILENO));
    check(posix_spawn_file_actions_adddup2(&files_, errors, STDERR_FILENO));
    check(posix_spawn_file_actions_addopen(&files_, STDIN_FILENO, "/dev/null", O_RDONLY, 0));
    check(posix_spawn_file_actions_addclosefrom_np(&files_, STDERR_FILENO + 1));
    sigset_t signals{};
    sigemptyset(&signals);
    check(posix_spawnattr_setsigmask(&attributes_, &signals));
    sigfillset(&signals);
    check(posix_spawnattr_setsigdefault(&attributes_, &signals));
    check(posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF));
  }
  ~SpawnSettings() {
    posix_spawnattr_destroy(&attributes_);
    posix_spawn_file_actions_destroy(&files_);
  }
  SpawnSettings(const SpawnSettings&) = delete;
  SpawnSettings& operator=(const SpawnSettings&) = delete;

  std::optional<pid_t> start(const std::string& path, char* const* arguments) const {
    pid_t child = 0;
    if (!isComplete_) return std::nullopt;
    if (posix_spawn(&child, path.c_str(), &files_, &attributes_, arguments, environ) != 0) {
      return std::nullopt;
    }
    return child;
  }

 private:
  void check(int error) { isComplete_ = isComplete_ && error == 0; }

  posix_spawn_file_actions_t files_{};
  posix_spawnattr_t attributes_{};
  bool isComplete_ = true;
};

std::optional<pid_t> start(const std::string& path, std::vector<std::string> arguments, int output,
                           int errors) {
  arguments.insert(arguments.begin(), path);
  std::vector<char*> pointers;
  pointers.reserve(arguments.size() + 1);
  for (auto& argument : arguments) pointers.push_back(argument.data());
  pointers.push_back(nullptr);
  return SpawnSettings(output, errors).start(path, pointers.data());
}

// Reads both pipes to their ends, since the program blocks while either is full. Returns the bytes of
// `output`.
std::string readBoth(int output, int errors) {
  std::string text;
  std::vector<char> buffer(16384);
  std::array<pollfd, 2> files{
      {{.fd = output, .events = POLLIN, .revents = 0}, {.fd = errors, .events = POLLIN, .revents = 0}}};
  // poll ignores negative descriptors.
  while (files[0].fd >= 0 || files[1].fd >= 0) {
    if (poll(files.data(), files.size(), -1) < 0) {
      if (errno == EINTR) continue;
      break;
    }
    for (auto& file : files) {
      if (file.fd < 0 || file.revents == 0) continue;
      const ssize_t size = readSome(file.fd, buffer);
      if (file.fd == output && size > 0) {
        text.append(buffer.data(), std::min(static_cast<std::size_t>(size), maxOutputBytes - text.size()));
      }
      if (size <= 0) file.fd = -1;
    }
  }
  return text;
}

void waitFor(pid_t child) {
  while (waitpid(child, nullptr, 0) < 0 && errno == EINTR) {
  }
}

}  // namespace

bool isExecutableFile(const std::string& path) {
  struct stat info {};
  return stat(path.c_str(), &info) == 0 && S_ISREG(info.st_mode) && access(path.c_str(), X_OK) == 0;
}

std::optional<std::string> runTool(const std::string& path, const std::vector<std::string>& arguments) {
  auto output = makePipe();
  auto errors = makePipe();
  if (!output || !errors) return std::nullopt;
  const auto child = start(path, arguments, output->writeEnd.get(), errors->writeEnd.get());
  if (!child) return std::nullopt;
  // Reading reaches the end only once the child's copies are the last ones.
  output->writeEnd = UniqueFd();
  errors->writeEnd = UniqueFd();
  std::string text = readBoth(output->readEnd.get(), errors->readEnd.get());
  waitFor(*child);
  return text;
}

}  // namespace kestrune::platform
