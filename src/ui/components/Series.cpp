#include "ui/components/Series.h"

#include <utility>

namespace kestrune::ui {
namespace {

// The time of day.
TextContent instant(const ViewContext& context, Date date) {
  return verbatimText(" · " + context.formats.time(context.env.secondOfDay(date)));
}

}  // namespace

ReadOut readOut(const ViewContext& context, Series series, FigureText figureText) {
  return [context, series = std::move(series),
          figureText = std::move(figureText)](std::size_t point) -> std::vector<TextContent> {
    if (point >= series.values.size()) return {};
    return {verbatimText(figureText(series.values[point])), instant(context, series.dates[point])};
  };
}

ReadOut readOut(const ViewContext& context, TitledSeries first, TitledSeries second, FigureText figureText) {
  return [context, first = std::move(first), second = std::move(second),
          figureText = std::move(figureText)](std::size_t point) -> std::vector<TextContent> {
    const auto& one = first.series.values;
    const auto& other = second.series.values;
    if (one.size() != other.size() || point >= one.size()) return {};
    return {key(first.title), verbatimText(" " + figureText(one[point]) + "  "), key(second.title),
            verbatimText(" " + figureText(other[point])), instant(context, first.series.dates[point])};
  };
}

FigureText percentText(const ViewContext& context) {
  return [&formats = context.formats](double fraction) { return formats.percent(fraction, 1); };
}

}  // namespace kestrune::ui
