#include "platform/linux/memory/LinuxMemory.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "platform/linux/files/Directory.h"
#include "platform/linux/files/Files.h"

namespace kestrune::platform {
namespace {

// More KiB than any machine has. What lies above is garbage, and sums over it would overflow.
constexpr std::uint64_t mostKibibytes = std::numeric_limits<std::uint64_t>::max() >> 14U;

// What can be given to programs without swapping, where an old kernel doesn't say so itself.
std::optional<std::uint64_t> available(const MemInfo& info) {
  if (info.memAvailable) return info.memAvailable;
  if (!info.memFree) return std::nullopt;
  const std::uint64_t caches = info.buffers.value_or(0) + info.cached.value_or(0);
  return *info.memFree + caches - std::min(caches, info.shmem.value_or(0));
}

std::optional<std::uint64_t> bytes(std::optional<std::uint64_t> kibibytes) {
  if (!kibibytes || *kibibytes > mostKibibytes) return std::nullopt;
  return *kibibytes * 1024;
}

}  // namespace

LinuxMemory::LinuxMemory(std::string root) : root_(std::move(root)), memInfo_(below(root_, "proc/meminfo")) {}

std::optional<VirtualMemoryPages> LinuxMemory::virtualMemoryPages() {
  const auto info = readMemInfo();
  if (!info || !info->memTotal || *info->memTotal > mostKibibytes) return std::nullopt;
  const auto unused = available(*info);
  if (!unused) return std::nullopt;
  // In a container the two may come from different sources and not fit together.
  const std::uint64_t used = *info->memTotal - std::min(*info->memTotal, *unused);
  const std::uint64_t zswap = std::min(info->zswap.value_or(0), mostKibibytes);
  const std::uint64_t compressed = std::min(used, zswap + zramKibibytes());
  const std::uint64_t anonymous = std::min(info->anonPages.value_or(0), mostKibibytes);
  const std::uint64_t shared = std::min(info->shmem.value_or(0), mostKibibytes);
  const std::uint64_t active = std::min(used - compressed, anonymous + shared);
  return VirtualMemoryPages{.wired = used - compressed - active, .active = active, .compressed = compressed};
}

std::optional<SwapUsage> LinuxMemory::swapUsage() {
  const auto info = readMemInfo();
  if (!info) return std::nullopt;
  const auto total = bytes(info->swapTotal);
  const auto free = bytes(info->swapFree);
  if (!total || !free) return std::nullopt;
  return SwapUsage{.totalBytes = *total, .usedBytes = *total - std::min(*total, *free)};
}

std::optional<std::uint64_t> LinuxMemory::physicalBytes() {
  const auto info = readMemInfo();
  return info ? bytes(info->memTotal) : std::nullopt;
}

std::optional<MemInfo> LinuxMemory::readMemInfo() {
  const auto text = memInfo_.read();
  return text ? std::optional(parseMemInfo(*text)) : std::nullopt;
}

std::uint64_t LinuxMemory::zramKibibytes() const {
  std::uint64_t sum = 0;
  for (const std::string& name : entryNames(below(root_, "sys/block"))) {
    if (!name.starts_with("zram")) continue;
    const auto text = readFile(below(root_, "sys/block/" + name + "/mm_stat"));
    const std::uint64_t used = text ? parseZramUsage(*text).value_or(0) : 0;
    sum += std::min(used / bytesPerKibibyte, mostKibibytes);
  }
  return sum;
}

}  // namespace kestrune::platform
