#pragma once

#include <cstddef>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "providers/HistoryRing.h"
#include "ui/components/Series.h"
#include "ui/view/View.h"

namespace kestrune::ui {

// A span that a chart can show.
struct TimeRangeChoice {
  std::string_view label;   // localizable
  std::size_t samples = 0;  // of the ring
};

// The last `samples` values divided by `unit`. More than 120 are thinned to 120 of them, the first and the
// last included; a ring of fewer than two yields none. The ring is not copied.
Series thinnedSeries(const HistoryRing<double>& ring, std::size_t samples, double unit = 1);

// A segmented picker over the choices.
View timeRangePicker(std::span<const TimeRangeChoice> choices, std::size_t selected,
                     std::function<void(std::size_t)> onSelect);

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
