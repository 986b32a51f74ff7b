#pragma once

#include <functional>
#include <span>
#include <string>
#include <vector>

#include "ui/components/Series.h"
#include "ui/components/TimeRange.h"
#include "ui/view/View.h"

namespace kestrune::ui {

// The parts of a card about a rate: its title, the rate now (bytes per second) and the line of the last
// minute.
std::vector<View> rateParts(const ViewContext& context, View title, double now, const Series& rates);

// A chart of percentages over a span that the user picks from `choices`.
struct UsageHistory {
  const ViewContext& context;
  const HistoryRing<double>& percentages;
  std::span<const TimeRangeChoice> choices;
  std::size_t selected = 0;
  std::function<void(std::size_t)> onSelect;
  Color color;
  std::string label;  // of the chart, for assistive tools; localizable

  View body() const;
};

}  // namespace kestrune::ui
