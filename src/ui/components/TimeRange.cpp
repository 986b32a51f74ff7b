#include "ui/components/TimeRange.h"

#include <algorithm>
#include <string>
#include <utility>

namespace kestrune::ui {

Series thinnedSeries(const HistoryRing<double>& ring, std::size_t samples, double unit) {
  constexpr std::size_t maxPoints = 120;
  const std::size_t count = ring.size();
  if (count < 2) return {};

  const std::size_t n = std::min(count, samples);
  const std::size_t points = std::min(n, maxPoints);
  Series series;
  series.values.reserve(points);
  series.dates.reserve(points);
  for (std::size_t k = 0; k < points; ++k) {
    const std::size_t entry = n > maxPoints ? k * (n - 1) / (maxPoints - 1) : k;
    const auto& sample = ring[count - n + entry];
    series.values.push_back(sample.value / unit);
    series.dates.push_back(sample.date);
  }
  return series;
}

View timeRangePicker(std::span<const TimeRangeChoice> choices, std::size_t selected,
                     std::function<void(std::size_t)> onSelect) {
  std::vector<TextContent> labels;
  labels.reserve(choices.size());
  for (const auto& choice : choices) labels.push_back(key(std::string(choice.label)));
  return segmentedPicker(
      std::move(labels), static_cast<int>(selected),
      [select = std::move(onSelect)](int index) { select(static_cast<std::size_t>(index)); });
}

}  // namespace kestrune::ui
