#include "platform/linux/processes/LinuxProcessTable.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <limits>
#include <utility>

#include <fcntl.h>
#include <unistd.h>

#include "platform/linux/files/Files.h"
#include "platform/linux/files/Text.h"
#include "platform/linux/files/UniqueFd.h"
#include "platform/linux/processes/ProcessFiles.h"

namespace kestrune::platform {
namespace {

constexpr std::size_t pathLimit = 1024;
constexpr std::uint64_t nanosecondsPerSecond = 1'000'000'000;

// "PID/file", on the stack.
class EntryPath {
 public:
  EntryPath(std::int32_t pid, std::string_view file) {
    char* end = std::to_chars(text_.data(), text_.data() + text_.size(), pid).ptr;
    *end++ = '/';
    std::ranges::copy(file, end);
  }
  const char* get() const { return text_.data(); }

 private:
  std::array<char, 32> text_{};
};

// Absent: the entry isn't a process.
std::optional<std::int32_t> pidOf(std::string_view entry) {
  const auto pid = parseNumber<std::int32_t>(entry);
  return pid && *pid > 0 ? pid : std::nullopt;
}

std::uint64_t positive(long figure, std::uint64_t fallback) {
  return figure > 0 ? static_cast<std::uint64_t>(figure) : fallback;
}

// The largest number instead of one that has wrapped around.
std::uint64_t multiplied(std::uint64_t a, std::uint64_t b) {
  std::uint64_t result = 0;
  return __builtin_mul_overflow(a, b, &result) ? std::numeric_limits<std::uint64_t>::max() : result;
}

std::uint64_t nanoseconds(std::uint64_t ticks, std::uint64_t ticksPerSecond) {
  // 100 ticks a second on all but one forgotten architecture, so dividing first loses nothing.
  return multiplied(ticks, nanosecondsPerSecond / ticksPerSecond);
}

}  // namespace

LinuxProcessTable::LinuxProcessTable(std::string root)
    : root_(std::move(root)),
      directory_(nullptr, closedir),
      ticksPerSecond_(positive(sysconf(_SC_CLK_TCK), 100)),
      pageBytes_(positive(sysconf(_SC_PAGESIZE), 4096)) {}

std::vector<ProcessReading> LinuxProcessTable::readings() {
  std::vector<ProcessReading> readings;
  if (!openDirectory()) return readings;
  readings.reserve(known_.size());
  ++walk_;
  rewinddir(directory_.get());
  while (const dirent* entry = readdir(directory_.get())) {
    const auto pid = pidOf(entry->d_name);
    if (!pid) continue;
    if (auto reading = readProcess(*pid)) readings.push_back(*std::move(reading));
  }
  // What this walk didn't find has ended.
  std::erase_if(known_, [this](const auto& entry) { return entry.second.lastWalk != walk_; });
  return readings;
}

bool LinuxProcessTable::openDirectory() {
  if (directory_ == nullptr) directory_.reset(opendir(below(root_, "proc").c_str()));
  return directory_ != nullptr;
}

// Absent: the process has ended, or may not be inspected.
std::optional<ProcessReading> LinuxProcessTable::readProcess(std::int32_t pid) {
  const auto text = read(pid, "stat");
  const auto stat = text ? parsePidStat(*text) : std::nullopt;
  if (!stat) return std::nullopt;
  Known& process = known(pid, *stat);
  if (!process.hasName) readName(pid, process);
  if (!process.hasPath) readPath(pid, process);
  return ProcessReading{.pid = pid,
                        .name = process.name,
                        .executablePath = process.path,
                        .residentBytes = multiplied(stat->residentPages, pageBytes_),
                        .userNanoseconds = nanoseconds(stat->userTicks, ticksPerSecond_),
                        .systemNanoseconds = nanoseconds(stat->systemTicks, ticksPerSecond_)};
}

LinuxProcessTable::Known& LinuxProcessTable::known(std::int32_t pid, const PidStat& stat) {
  Known& process = known_[pid];
  const bool isNew = process.lastWalk == 0;
  if (isNew || process.startTime != stat.startTime || process.kernelName != stat.name) {
    process = {.startTime = stat.startTime,
               .isKernelThread = stat.isKernelThread,
               .kernelName = std::string(stat.name)};
  }
  process.lastWalk = walk_;
  return process;
}

void LinuxProcessTable::readName(std::int32_t pid, Known& process) {
  process.name = process.kernelName;
  process.hasName = true;
  if (process.isKernelThread || !mayBeTruncated(process.kernelName)) return;
  readPath(pid, process);
  const std::string_view commandLine = read(pid, "cmdline").value_or(std::string_view());
  process.name = completedName(process.kernelName, process.path, commandLine);
}

void LinuxProcessTable::readPath(std::int32_t pid, Known& process) {
  process.hasPath = true;
  if (process.isKernelThread) return;
  const ssize_t size =
      readlinkat(dirfd(directory_.get()), EntryPath(pid, "exe").get(), buffer_.data(), buffer_.size());
  if (size < 0) {
    // These don't change. A process that is just starting or ending has no link for a moment.
    process.hasPath = errno == EACCES || errno == EPERM || errno == ENAMETOOLONG;
    return;
  }
  const std::string_view path =
      withoutDeleted(std::string_view(buffer_.data(), static_cast<std::size_t>(size)));
  if (path.size() < pathLimit) process.path = path;
}

// Bytes of `buffer_`. Longer files are cut, which does no harm to those read here.
std::optional<std::string_view> LinuxProcessTable::read(std::int32_t pid, std::string_view file) {
  const UniqueFd opened(openat(dirfd(directory_.get()), EntryPath(pid, file).get(), O_RDONLY | O_CLOEXEC));
  if (!opened) return std::nullopt;
  const ssize_t size = readSome(opened.get(), buffer_);
  if (size <= 0) return std::nullopt;
  return std::string_view(buffer_.data(), static_cast<std::size_t>(size));
}

}  // namespace kestrune::platform
