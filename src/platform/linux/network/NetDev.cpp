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

// More than a port moves in years. What lies above is a driver's counter that fell below zero, or garbage,
// and a sum over it might overflow.
constexpr std::uint64_t mostBytes = std::uint64_t{1} << 60U;

// Absent: it is no number. One that doesn't fit is as large as can be.
std::optional<std::uint64_t> count(std::string_view text) {
  std::uint64_t value = 0;
  const char* const textEnd = text.data() + text.size();
  const auto [end, error] = std::from_chars(text.data(), textEnd, value);
  if (error == std::errc::invalid_argument || end != textEnd) return std::nullopt;
  return error == std::errc() ? value : std::numeric_limits<std::uint64_t>::max();
}

std::optional<LinkEntry> parseLine(std::string_view line) {
  // The last one: some kernels let names have colons too, and not all put a blank behind it.
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
  if (*received <= mostBytes && *sent <= mostBytes) {
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
