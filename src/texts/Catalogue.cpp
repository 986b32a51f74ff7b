#include "texts/Catalogue.h"

#include <algorithm>
#include <array>

namespace kestrune {
namespace {

struct Entry {
  std::string_view key;
  std::string_view text;
};

constexpr std::array entries{
    Entry{"Real-time system monitor for macOS.\n\nTrack CPU, memory, disk, network, battery, and audio — all "
          "in one "
          "place.",
          "Real-time system monitor for Linux.\n\nTrack CPU, memory, disk, network, battery, and audio — all "
          "in one place."},
    Entry{"App Store does not allow access to per-process CPU data.",
          "The sandbox does not allow access to per-process CPU data."},
};

}  // namespace

// Not static: which texts there are is the catalogue's matter.
// NOLINTNEXTLINE(readability-convert-member-functions-to-static)
std::string_view Catalogue::text(std::string_view key) const {
  const auto* const found = std::ranges::find(entries, key, &Entry::key);
  return found == entries.end() ? key : found->text;
}

}  // namespace kestrune
