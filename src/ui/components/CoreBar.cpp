#include "ui/components/CoreBar.h"

#include <algorithm>

#include "ui/components/Formatters.h"
#include "ui/components/Fraction.h"
#include "ui/components/Sparkline.h"
#include "ui/view/View.h"

namespace kestrune::ui {
namespace {

std::string coreLabel(std::size_t index, std::size_t effCores) {
  if (effCores == 0) return "C" + std::to_string(index + 1);
  if (index < effCores) return "E" + std::to_string(index + 1);
  return "P" + std::to_string(index + 1 - effCores);
}

}  // namespace

View CoreBar::body(ReadOut readOut) const {
  const Color color = isPerformance ? ColorRole::accent : ColorRole::secondary;
  const std::string percent = std::to_string(wholePercent(usage));

  auto caption = hstack(8, VerticalAlignment::firstTextBaseline,
                        views(verbatim(label).withFont(11).withForeground(ColorRole::secondary), spacer(),
                              verbatim(percent + "%").withMonospacedDigits(14)));
  auto bar = View(BarContent{.fraction = clampedFraction(usage / 100),
                             .track = ColorRole::quaternary,
                             .fill = color,
                             .cornerRadius = 3,
                             .animationSeconds = 0.4});
  auto trend = SparklineView{.values = history,
                             .color = color.withOpacity(0.6),
                             .autoScale = false,
                             .label = std::string(isPerformance ? "Performance" : "Efficiency") +
                                      " core usage over last 60 seconds"};
  return vstack(4, HorizontalAlignment::leading,
                views(std::move(caption), std::move(bar).height(5),
                      trend.body().withReadOut(std::move(readOut)).height(14)))
      .accessibilityElement(
          keyWith(isPerformance ? "performance core, %@ percent" : "efficiency core, %@ percent", {percent}));
}

std::vector<CoreBar> coreBars(const CPUSnapshot& snapshot, const ChipInfo& chip,
                              const HistoryRing<CPUSnapshot>& history) {
  const auto effCores = static_cast<std::size_t>(std::max(chip.effCores, 0));
  std::vector<CoreBar> bars;
  bars.reserve(snapshot.coreUsages.size());
  for (std::size_t i = 0; i < snapshot.coreUsages.size(); ++i) {
    bars.push_back({coreLabel(i, effCores), snapshot.coreUsages[i], effCores > 0 && i >= effCores, {}});
    bars.back().history.reserve(history.size());
  }
  for (std::size_t sample = 0; sample < history.size(); ++sample) {
    const auto& usages = history[sample].value.coreUsages;
    const std::size_t shared = std::min(usages.size(), bars.size());
    for (std::size_t i = 0; i < shared; ++i) bars[i].history.push_back(usages[i] / 100);
  }
  return bars;
}

}  // namespace kestrune::ui
