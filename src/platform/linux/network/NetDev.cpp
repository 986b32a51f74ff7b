#include "platform/linux/network/NetDev.h"

#include <charconv>
#include <cstdint>
#include <limits>
#include <optional>
#include <system_error>

#include "platform/linux/files/FieldScanner.h"
#include "platform/linux/files/Text.h"

namespace kestrune::platform {
namespace {

// More than a port moves in years. Anything above is garbage, or a driver's counter that fell below zero, and
// sums of it could overflow.
constexpr std::uint64_t maxBytes = std::uint64_t{1} << 60U;

// Absent: it isn't a number. The largest number stands for one that doesn't fit.
std::optional<std::uint64_t> count(std::string_view text) {
  std::uint64_t value = 0;
  const char* const textEnd = text.data() + text.size();
  const auto [end, error] = std::from_chars(text.data(), textEnd, value);
  if (error == std::errc::invalid_argument || end != textEnd) return std::nullopt;
  return error == std::errc() ? value : std::numeric_limits<std::uint64_t>::max();
}

std::optional<LinkEntry> parseLine(std::string_view line) {
  // The last colon: names may contain colons, and some kernels don't write a blank after the last.
  const auto colon = line.rfind(':');
  if (colon == std::string_view::npos) return std::nullopt;
  FieldScanner before(line.substr(0, colon));
  const std::string_view name = before.field();
  if (name.empty() || !before.rest().empty()) return std::nullopt;

  FieldScanner fields(line.substr(colon + 1));
  const auto received = count(fields.field());
  // packets, errors, drops, fifo, frame, compressed, multicast
  for (int skipped = 0; skipped < 7; ++skipped) fields.field();
  const auto sent = count(fields.field());
  if (!received || !sent) return std::nullopt;

  LinkEntry link{.name = std::string(name)};
  if (*received <= maxBytes && *sent <= maxBytes) {
    link.counters = {.received = *received, .sent = *sent};
  }
  return link;
}

}  // namespace

std::vector<LinkEntry> parseNetDev(std::string_view text) {
  std::vector<LinkEntry> links;
  for (text = wholeLines(text); !text.empty();) {
    if (auto link = parseLine(takeLine(text))) links.push_back(*std::move(link));
  }
  return links;
}

}  // namespace kestrune::platform
