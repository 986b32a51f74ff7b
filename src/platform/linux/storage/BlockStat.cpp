#include "platform/linux/storage/BlockStat.h"

#include <cstdint>

#include "platform/linux/files/FieldScanner.h"
#include "platform/linux/files/Text.h"

namespace kestrune::platform {
namespace {

constexpr std::uint64_t sectorBytes = 512;
// More than a drive moves in its life. Anything above is garbage, and sums of it could overflow.
constexpr std::uint64_t maxSectors = std::uint64_t{1} << 48U;

std::optional<std::uint64_t> bytesOf(std::optional<std::uint64_t> sectors) {
  if (!sectors || *sectors > maxSectors) return std::nullopt;
  return *sectors * sectorBytes;
}

}  // namespace

BlockDriver parseBlockStat(std::string_view text) {
  FieldScanner fields(takeLine(text));
  fields.field();  // reads completed
  fields.field();  // reads merged
  const auto read = fields.number<std::uint64_t>();
  fields.field();  // milliseconds spent reading
  fields.field();  // writes completed
  fields.field();  // writes merged
  const auto written = fields.number<std::uint64_t>();
  return {.bytesRead = bytesOf(read), .bytesWritten = bytesOf(written)};
}

}  // namespace kestrune::platform
