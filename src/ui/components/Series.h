#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "providers/HistoryRing.h"
#include "runtime/Date.h"
#include "ui/components/ViewContext.h"
#include "ui/view/View.h"

namespace kestrune::ui {

// Figures with their times, oldest first.
struct Series {
  std::vector<double> values;
  std::vector<Date> dates;
};

// One figure of each sample that a ring holds.
template <class Payload, class Figure>
Series seriesOf(const HistoryRing<Payload>& ring, Figure figure) {
  Series series;
  series.values.reserve(ring.size());
  series.dates.reserve(ring.size());
  for (std::size_t i = 0; i < ring.size(); ++i) {
    series.values.push_back(std::invoke(figure, ring[i].value));
    series.dates.push_back(ring[i].date);
  }
  return series;
}

// How a figure is written: "12%", "3.4 MB/s".
using FigureText = std::function<std::string(double)>;

// "12% · 14:05:32": a point's figure and its time.
ReadOut readOut(const ViewContext& context, Series series, FigureText figureText);

// "Read 3.4 MB/s  Write 12.0 KB/s · 14:05:32": the figures of two series at the same instant. The titles
// are localizable. No text if the series differ in length.
struct TitledSeries {
  std::string title;
  Series series;
};
ReadOut readOut(const ViewContext& context, TitledSeries first, TitledSeries second, FigureText figureText);

// A fraction as a percentage with one decimal.
FigureText percentText(const ViewContext& context);

}  // namespace kestrune::ui
