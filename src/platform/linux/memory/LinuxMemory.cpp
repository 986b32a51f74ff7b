#include "platform/linux/memory/LinuxMemory.h"

#include <algorithm>
#include <array>
#include <utility>

#include "platform/linux/files/Directory.h"
#include "platform/linux/files/FieldScanner.h"
#include "platform/linux/files/Files.h"
#include "platform/linux/files/Text.h"

namespace kestrune::platform {
namespace {

// What programs can be given without swapping. Old kernels don't report it.
std::optional<std::uint64_t> available(const MemInfo& info) {
  if (info.memAvailable) return info.memAvailable;
  if (!info.memFree) return std::nullopt;
  const std::uint64_t caches = info.buffers.value_or(0) + info.cached.value_or(0);
  return *info.memFree + caches - std::min(caches, info.shmem.value_or(0));
}

struct Line {
  std::string_view name;
  std::optional<std::uint64_t> MemInfo::*field;
};

constexpr std::array<Line, 10> lines = {{{"MemTotal", &MemInfo::memTotal},
                                         {"MemAvailable", &MemInfo::memAvailable},
                                         {"MemFree", &MemInfo::memFree},
                                         {"Buffers", &MemInfo::buffers},
                                         {"Cached", &MemInfo::cached},
                                         {"Shmem", &MemInfo::shmem},
                                         {"AnonPages", &MemInfo::anonPages},
                                         {"Zswap", &MemInfo::zswap},
                                         {"SwapTotal", &MemInfo::swapTotal},
                                         {"SwapFree", &MemInfo::swapFree}}};

constexpr std::uint64_t bytesPerKibibyte = 1024;
constexpr std::uint64_t maxBytes = std::uint64_t{1} << 60U;

std::optional<std::uint64_t> bytes(std::optional<std::uint64_t> units, std::uint64_t bytesPerUnit) {
  if (!units || *units > maxBytes / bytesPerUnit) return std::nullopt;
  return *units * bytesPerUnit;
}

void parseLine(std::string_view line, MemInfo& info) {
  const auto colon = line.find(':');
  if (colon == std::string_view::npos) return;
  const auto* const known = std::ranges::find(lines, line.substr(0, colon), &Line::name);
  if (known == lines.end()) return;
  const auto kibibytes = FieldScanner(line.substr(colon + 1)).number<std::uint64_t>();
  info.*(known->field) = bytes(kibibytes, bytesPerKibibyte);
}

}  // namespace

MemInfo parseMemInfo(std::string_view text) {
  MemInfo info;
  for (text = wholeLines(text); !text.empty();) parseLine(takeLine(text), info);
  return info;
}

std::optional<std::uint64_t> parseZramUsage(std::string_view mmStat) {
  FieldScanner fields(takeLine(mmStat));
  fields.field();  // original size of the data
  fields.field();  // compressed size
  return bytes(fields.number<std::uint64_t>(), 1);
}

LinuxMemory::LinuxMemory(std::string root) : root_(std::move(root)), memInfo_(below(root_, "proc/meminfo")) {}

std::optional<MemoryUsage> LinuxMemory::usage() {
  const auto info = readMemInfo();
  const auto unused = info ? available(*info) : std::nullopt;
  if (!unused || !info->memTotal) return std::nullopt;
  // In a container the figures may come from different sources and contradict each other.
  const std::uint64_t used = *info->memTotal - std::min(*info->memTotal, *unused);
  const std::uint64_t compressed = std::min(used, info->zswap.value_or(0) + zramBytes());
  const std::uint64_t anonymousAndShared = info->anonPages.value_or(0) + info->shmem.value_or(0);
  const std::uint64_t active = std::min(used - compressed, anonymousAndShared);
  return MemoryUsage{
      .wiredBytes = used - compressed - active, .activeBytes = active, .compressedBytes = compressed};
}

std::optional<SwapUsage> LinuxMemory::swapUsage() {
  const auto info = readMemInfo();
  if (!info || !info->swapTotal || !info->swapFree) return std::nullopt;
  return SwapUsage{.totalBytes = *info->swapTotal,
                   .usedBytes = *info->swapTotal - std::min(*info->swapTotal, *info->swapFree)};
}

std::optional<std::uint64_t> LinuxMemory::physicalBytes() {
  const auto info = readMemInfo();
  return info ? info->memTotal : std::nullopt;
}

std::optional<MemInfo> LinuxMemory::readMemInfo() {
  const auto text = memInfo_.read();
  return text ? std::optional(parseMemInfo(*text)) : std::nullopt;
}

std::uint64_t LinuxMemory::zramBytes() const {
  std::uint64_t sum = 0;
  for (const std::string& name : entryNames(below(root_, "sys/block"))) {
    if (!name.starts_with("zram")) continue;
    const auto text = readFile(below(root_, "sys/block/" + name + "/mm_stat"));
    if (text) sum += parseZramUsage(*text).value_or(0);
  }
  return sum;
}

}  // namespace kestrune::platform
