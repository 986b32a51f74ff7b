#include "ui/CPUTimeRange.h"

#include <algorithm>

namespace kestrune::ui {

std::vector<double> usageSeries(const HistoryRing<double>& percentages, std::size_t samples) {
  constexpr std::size_t mostPoints = 120;
  const std::size_t count = percentages.size();
  if (count < 2) return {};

  const std::size_t n = std::min(count, samples);
  const std::size_t points = std::min(n, mostPoints);
  std::vector<double> series;
  series.reserve(points);
  for (std::size_t k = 0; k < points; ++k) {
    const std::size_t entry = n > mostPoints ? k * (n - 1) / (mostPoints - 1) : k;
    series.push_back(percentages[count - n + entry].value / 100);
  }
  return series;
}

}  // namespace kestrune::ui
