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

namespace kestrune::platform {
namespace {

constexpr std::size_t pathLimit = 1024;
constexpr std::string_view deletedSuffix = " (deleted)";
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

// Absent: no process has such an entry.
std::optional<std::int32_t> pidOf(std::string_view entry) {
  const auto pid = parseNumber<std::int32_t>(entry);
  return pid && *pid > 0 ? pid : std::nullopt;
}

std::uint64_t positive(long figure, std::uint64_t fallback) {
  return figure > 0 ? static_cast<std::uint64_t>(figure) : fallback;
}

// Garbage stays at the highest figure instead of wrapping around.
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

std::int32_t LinuxProcessTable::processCount() {
  hasList_ = readList();
  return hasList_ ? static_cast<std::int32_t>(pids_.size()) : -1;
}

std::int32_t LinuxProcessTable::listPids(std::span<std::int32_t> pids) {
  if (!std::exchange(hasList_, false) && !readList()) return -1;
  forgetEnded();
  const std::size_t count = std::min(pids.size(), pids_.size());
  std::copy_n(pids_.begin(), count, pids.begin());
  return static_cast<std::int32_t>(count);
}

bool LinuxProcessTable::openDirectory() {
  if (directory_ == nullptr) directory_.reset(opendir(below(root_, "proc").c_str()));
  return directory_ != nullptr;
}

bool LinuxProcessTable::readList() {
  if (!openDirectory()) return false;
  rewinddir(directory_.get());
  pids_.clear();
  while (const dirent* entry = readdir(directory_.get())) {
    if (const auto pid = pidOf(entry->d_name)) pids_.push_back(*pid);
  }
  return !pids_.empty();
}

// A new walk begins: what the last one didn't meet has ended.
void LinuxProcessTable::forgetEnded() {
  std::erase_if(known_, [this](const auto& entry) { return entry.second.walk != walk_; });
  current_ = nullptr;
  ++walk_;
}

std::optional<TaskInfo> LinuxProcessTable::taskInfo(std::int32_t pid) {
  current_ = nullptr;
  const auto text = read(pid, "stat");
  const auto stat = text ? parsePidStat(*text) : std::nullopt;
  if (!stat) return std::nullopt;

  const auto [entry, isNew] = known_.try_emplace(pid);
  Known& process = entry->second;
  if (isNew || process.startTime != stat->startTime || process.kernelName != stat->name) {
    process.startTime = stat->startTime;
    process.isKernelThread = stat->isKernelThread;
    process.hasName = process.hasPath = false;
    process.kernelName = stat->name;
  }
  process.walk = walk_;
  currentPid_ = pid;
  current_ = &process;
  return TaskInfo{.residentBytes = multiplied(stat->residentPages, pageBytes_),
                  .userNanoseconds = nanoseconds(stat->userTicks, ticksPerSecond_),
                  .systemNanoseconds = nanoseconds(stat->systemTicks, ticksPerSecond_)};
}

std::string LinuxProcessTable::name(std::int32_t pid) {
  Known* process = known(pid);
  if (process == nullptr) return {};
  if (!process->hasName) learnName(pid, *process);
  return process->name;
}

std::string LinuxProcessTable::executablePath(std::int32_t pid) {
  Known* process = known(pid);
  if (process == nullptr) return {};
  if (!process->hasPath) learnPath(pid, *process);
  return process->path;
}

LinuxProcessTable::Known* LinuxProcessTable::known(std::int32_t pid) {
  return pid == currentPid_ ? current_ : nullptr;
}

void LinuxProcessTable::learnPath(std::int32_t pid, Known& process) {
  process.path.clear();
  process.hasPath = true;
  if (process.isKernelThread) return;
  const ssize_t size =
      readlinkat(dirfd(directory_.get()), EntryPath(pid, "exe").get(), buffer_.data(), buffer_.size());
  if (size < 0) {
    // Where looking is forbidden it stays so; a process that is just ending or beginning has no link for a
    // moment.
    process.hasPath = errno == EACCES || errno == EPERM || errno == ENAMETOOLONG;
    return;
  }
  std::string_view path(buffer_.data(), static_cast<std::size_t>(size));
  if (path.ends_with(deletedSuffix)) path.remove_suffix(deletedSuffix.size());
  if (path.size() < pathLimit) process.path = path;
}

void LinuxProcessTable::learnName(std::int32_t pid, Known& process) {
  process.name = process.kernelName;
  process.hasName = true;
  if (process.isKernelThread || !mayBeCut(process.kernelName)) return;
  if (!process.hasPath) learnPath(pid, process);
  const std::string_view commandLine = read(pid, "cmdline").value_or(std::string_view());
  process.name = completedName(process.kernelName, process.path, commandLine);
}

// Bytes of `buffer_`. What is longer is cut, which no file that is read here minds.
std::optional<std::string_view> LinuxProcessTable::read(std::int32_t pid, std::string_view file) {
  if (!openDirectory()) return std::nullopt;
  const UniqueFd opened(openat(dirfd(directory_.get()), EntryPath(pid, file).get(), O_RDONLY | O_CLOEXEC));
  if (!opened) return std::nullopt;
  const ssize_t size = readSome(opened.get(), buffer_);
  if (size <= 0) return std::nullopt;
  return std::string_view(buffer_.data(), static_cast<std::size_t>(size));
}

}  // namespace kestrune::platform
