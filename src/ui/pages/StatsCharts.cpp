#include "ui/pages/StatsCharts.h"

#include <utility>

#include "ui/components/Card.h"
#include "ui/components/Dashboard.h"
#include "ui/components/Formatters.h"
#include "ui/components/NetworkParts.h"
#include "ui/view/View.h"

namespace kestrune::ui {
namespace {

constexpr auto centered = VerticalAlignment::center;
constexpr double chartHeight = 130;
constexpr double bytesPerMegabyte = 1048576.0;

View swatch(Color color) {
  return spacer(0).size(10, 10).background({.fill = color, .cornerRadius = 3});
}

}  // namespace

std::string megabytesText(double megabytes) {
  return formatBytes(wholeBytes(megabytes * bytesPerMegabyte));
}

std::string gigabytesText(double gigabytes) {
  return formatGibibytes(gigabytes, 1);
}

double megabytesScaleUnit(double highest) {
  return highest >= 1024 ? 102.4 : 1;
}

View summaryCard(std::string symbolName, std::string name, std::string value) {
  return Card{
      vstack(
          6, HorizontalAlignment::leading,
          views(caption(label(std::move(name), std::move(symbolName))),
                verbatim(std::move(value)).withMonospacedDigits(28, FontWeight::semibold).withLineLimit(1)))
          .fillWidth()};
}

View legendItem(Color color, std::string name, std::string value) {
  return hstack(5, centered,
                views(swatch(color), caption(text(std::move(name))),
                      verbatim(std::move(value)).withMonospacedDigits(14, FontWeight::medium)));
}

View chartCard(std::string title, std::string symbolName, DayChartContent chart, TextContent spoken,
               std::vector<View> legend) {
  auto graph = View(std::move(chart)).accessibilityElement(std::move(spoken)).height(chartHeight);
  return Card{section(views(sectionHeader(label(std::move(title), std::move(symbolName))), std::move(graph),
                            hstack(20, centered, std::move(legend))))};
}

ReadOut dayReadOut(std::function<std::string(std::size_t)> dayTitle, std::vector<NamedFigures> named,
                   std::function<std::string(double)> figureText) {
  return [dayTitle = std::move(dayTitle), named = std::move(named),
          figureText = std::move(figureText)](std::size_t day) -> std::vector<TextContent> {
    std::vector<TextContent> parts{verbatimText(dayTitle(day) + ":")};
    for (const auto& [name, figures] : named) {
      if (day >= figures.size() || !figures[day]) return {};
      parts.push_back(verbatimText("  "));
      parts.push_back(key(name));
      parts.push_back(verbatimText(" " + figureText(*figures[day])));
    }
    return parts;
  };
}

}  // namespace kestrune::ui
