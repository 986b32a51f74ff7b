#pragma once

#include <cstddef>
#include <functional>
#include <span>
#include <string_view>

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

}  // namespace kestrune::ui
