#include "ui/components/Trends.h"

#include <utility>

#include "ui/components/Dashboard.h"
#include "ui/components/Formatters.h"
#include "ui/components/Sparkline.h"
#include "ui/view/ViewList.h"

namespace kestrune::ui {

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
