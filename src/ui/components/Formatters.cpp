#include "ui/components/Formatters.h"

#include <algorithm>
#include <cmath>

#include <fmt/format.h>

namespace kestrune::ui {
namespace {

constexpr double kilo = 1024;
constexpr double mega = kilo * 1024;
constexpr double giga = mega * 1024;

}  // namespace

std::string formatBytes(std::uint64_t bytes) {
  const auto size = static_cast<double>(bytes);
  if (size / giga >= 1) return fmt::format("{:.1f} GB", size / giga);
  if (size / mega >= 1) return fmt::format("{:.0f} MB", size / mega);
  return fmt::format("{:.0f} KB", size / kilo);
}

std::string formatRate(double bytesPerSecond) {
  const double rate = bytesPerSecond > 0 ? bytesPerSecond : 0;
  if (rate < kilo) return fmt::format("{:.0f} B/s", rate);
  if (rate < mega) return fmt::format("{:.1f} KB/s", rate / kilo);
  if (rate < giga) return fmt::format("{:.1f} MB/s", rate / mega);
  return fmt::format("{:.2f} GB/s", rate / giga);
}

double gibibytes(double bytes) {
  return bytes / giga;
}

std::string formatGibibytes(double gibibytes, int fractionDigits) {
  return fmt::format("{:.{}f} GB", gibibytes, fractionDigits);
}

int wholePercent(double percent) {
  constexpr double limit = 1e9;
  return std::isnan(percent) ? 0 : static_cast<int>(std::clamp(percent, -limit, limit));
}

}  // namespace kestrune::ui
