#include "platform/linux/memory/MemInfo.h"

#include <algorithm>
#include <array>

#include "platform/linux/files/FieldScanner.h"
#include "platform/linux/files/Text.h"

namespace kestrune::platform {
namespace {

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

}  // namespace kestrune::platform
