#include "ui/components/Trends.h"

#include <algorithm>
#include <string>
#include <utility>

#include "ui/components/Dashboard.h"
#include "ui/components/Formatters.h"
#include "ui/components/Sparkline.h"
#include "ui/view/View.h"

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

std::vector<View> rateParts(const ViewContext& context, View title, double now, const Series& rates) {
  const SparklineView trend{rates.values, ColorRole::accent, true, "Metric trend"};
  return views(sectionHeader(std::move(title)), verbatim(formatRate(now)).withMonospacedDigits(28),
               trend.body().withReadOut(readOut(context, rates, formatRate)).height(32));
}

View UsageHistory::body() const {
  auto picker = timeRangePicker(choices, selected, onSelect);
  const Series series = thinnedSeries(percentages, choices[selected].samples, 100);
  const SparklineView chart{series.values, color, false, label};
  return section(views(headerRow(ui::label("Usage history", "chart.xyaxis.line"), std::move(picker)),
                       chart.body().withReadOut(readOut(context, series, percentText(context))).height(60),
                       edgeCaptions("0%", "100%", ColorRole::secondary)));
}

}  // namespace kestrune::ui
