#include "ui/pages/StatsTab.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>
#include <utility>

#include <fmt/format.h>

#include "ui/components/Dashboard.h"
#include "ui/components/Trends.h"
#include "ui/pages/StatsCharts.h"
#include "ui/view/View.h"

namespace kestrune::ui {
namespace {

using Mark = DayChartContent::Mark;

constexpr auto centered = VerticalAlignment::center;
constexpr double areaOpacity = 0.08;
constexpr double peakSwatchOpacity = 0.3;
constexpr std::array<TimeRangeChoice, 3> ranges{{{"7 days", 7}, {"30 days", 30}, {"90 days", 90}}};

}  // namespace

const char* label(StatsRange range) {
  return ranges.at(static_cast<std::size_t>(range)).label.data();
}

int dayCount(StatsRange range) {
  return static_cast<int>(ranges.at(static_cast<std::size_t>(range)).samples);
}

StatsTab::StatsTab(const ViewContext& context) : context_(context) {
  loadSoon();
}

void StatsTab::select(StatsRange wanted) {
  range.set(wanted);
  loadSoon();
}

// Posted, so that the page appears before its files are read.
void StatsTab::loadSoon() {
  isLoading.set(true);
  context_.loop.post([this, alive = std::weak_ptr(alive_)] {
    if (!alive.expired()) load();
  });
}

void StatsTab::load() {
  const AppEnvironment& env = context_.env;
  const int count = dayCount(range.get());
  dailySummaries_ = {env.recorder->current};
  std::ranges::move(env.historyStore.daysBefore(context_.loop.clock().now(), count - 1),
                    std::back_inserter(dailySummaries_));
  std::ranges::stable_sort(dailySummaries_, {}, &DailySummary::date);
  stats_.clear();
  stats_.reserve(dailySummaries_.size());
  for (const DailySummary& record : dailySummaries_) {
    stats_.push_back(dayStats(record, env.startOfDay(record.date)));
  }
  days_.clear();
  statsOfDay_.clear();
  for (int day = -(count - 1); day <= 0; ++day) {
    const auto start = env.startOfDay(day);
    if (!start) continue;
    const auto found = std::ranges::find(stats_, *start, &DayStats::date);
    days_.push_back(*start);
    statsOfDay_.push_back(found == stats_.end()
                              ? std::nullopt
                              : std::optional(static_cast<std::size_t>(found - stats_.begin())));
  }
  isLoading.set(false);
}

std::string StatsTab::csv() const {
  return statsCSV(stats_, dailySummaries_,
                  [&files = context_.env.dayFiles](Date date) { return files.dayName(date); });
}

StatsTab::Figures StatsTab::figures(double DayStats::*figure) const {
  Figures values;
  values.reserve(statsOfDay_.size());
  for (const auto& at : statsOfDay_) {
    values.push_back(at ? std::optional(stats_[*at].*figure) : std::nullopt);
  }
  return values;
}

double StatsTab::sum(double DayStats::*figure) const {
  double total = 0;
  for (const DayStats& day : stats_) total += day.*figure;
  return total;
}

double StatsTab::mean(double DayStats::*figure) const {
  return stats_.empty() ? 0 : sum(figure) / static_cast<double>(stats_.size());
}

double StatsTab::highest(double DayStats::*figure) const {
  double most = 0;
  for (const DayStats& day : stats_) most = std::max(most, day.*figure);
  return most;
}

std::vector<TextContent> StatsTab::axisDays() const {
  std::vector<TextContent> days;
  days.reserve(days_.size());
  for (const Date day : days_) {
    days.push_back(verbatimText(context_.formats.shortDay(context_.env.dayFiles.dayName(day))));
  }
  return days;
}

std::string StatsTab::dayTitle(std::size_t day) const {
  return day < days_.size() ? context_.formats.day(context_.env.dayFiles.dayName(days_[day])) : std::string();
}

std::string StatsTab::percent(double percentage) const {
  return context_.formats.percent(percentage / 100, 0);
}

View StatsTab::body() {
  std::vector<View> sections = views(titleRow());
  if (isLoading.get()) {
    sections.push_back(loadingState());
  } else if (stats_.empty()) {
    sections.push_back(emptyState());
  } else {
    for (auto& each : views(summary(), cpuCard(), memoryCard(), networkCard(), diskCard())) {
      sections.push_back(std::move(each));
    }
  }
  return dashboard(std::move(sections));
}

View StatsTab::titleRow() {
  auto picker = timeRangePicker(ranges, static_cast<std::size_t>(range.get()),
                                [this](std::size_t index) { select(static_cast<StatsRange>(index)); });
  auto exportButton =
      button(label("Export CSV", "arrow.down.doc").withFont(12).paddingHorizontal(8).paddingVertical(3),
             [this] { isExporting.set(true); })
          .help(key("Export history data as CSV file"));
  std::vector<View> parts = views(std::move(picker), spacer(), std::move(exportButton));
  if (isExporting.get()) {
    std::string fileName = std::string("Kestrune-") + label(range.get()) + ".csv";
    std::ranges::replace(fileName, ' ', '-');
    parts.emplace_back(FileExportContent{.fileName = std::move(fileName),
                                         .fileKind = key("Comma-separated text"),
                                         .extension = "csv",
                                         .content = csv(),
                                         .onEnd = [this] { isExporting.set(false); }});
  }
  return hstack(innerSpacing, centered, std::move(parts));
}

View StatsTab::loadingState() const {
  auto dots = hstack(5, centered, {});
  for (int i = 0; i < 3; ++i) {
    dots.children.push_back(
        dot(7, ColorRole::secondary).pulse({.from = 0.25, .to = 1, .seconds = 0.5, .delay = 0.15 * i}));
  }
  return vstack(10, HorizontalAlignment::center,
                views(std::move(dots), text("Loading history…").withForeground(ColorRole::secondary)))
      .fillWidth(HorizontalAlignment::center)
      .padding({.top = 60, .leading = 0, .bottom = 0, .trailing = 0});
}

View StatsTab::emptyState() const {
  const auto small = [](const char* words) { return caption(text(words), ColorRole::tertiary); };
  return vstack(10, HorizontalAlignment::center,
                views(symbol("chart.xyaxis.line").withFont(40).withForeground(ColorRole::secondary),
                      text("No history found for this range")
                          .withFont(13, FontWeight::semibold)
                          .withForeground(ColorRole::secondary),
                      small("Kestrune records data once per minute while running."),
                      small("All your data is keep local. Never leave a trace.")))
      .fillWidth(HorizontalAlignment::center)
      .padding({.top = 60, .leading = 0, .bottom = 0, .trailing = 0});
}

View StatsTab::summary() const {
  const double total = (sum(&DayStats::networkUpMB) + sum(&DayStats::networkDownMB));
  return cardRow(views(summaryCard("calendar", "Days recorded", std::to_string(stats_.size())),
                       summaryCard("cpu", "Avg CPU", percent(mean(&DayStats::avgCPU))),
                       summaryCard("cpu", "Peak CPU", percent(highest(&DayStats::peakCPU))),
                       summaryCard("network", "Total data", megabytesText(total))));
}

View StatsTab::cpuCard() const {
  const auto asPercent = [&formats = context_.formats](double figure) {
    return formats.percent(figure / 100, 0);
  };
  const auto spoken = [](double figure) { return fmt::format("{:.0f}", figure); };
  const double average = mean(&DayStats::avgCPU);
  const double peak = highest(&DayStats::peakCPU);
  return loadCard(
      "CPU Usage", "cpu", ColorRole::accent, {&DayStats::avgCPU, &DayStats::peakCPU, 1, asPercent},
      keyWith("CPU usage trend. Avg %@ percent, peak %@ percent.", {spoken(average), spoken(peak)}));
}

View StatsTab::memoryCard() const {
  const std::string average = gigabytesText(mean(&DayStats::avgMemoryGB));
  const std::string peak = gigabytesText(highest(&DayStats::peakMemoryGB));
  return loadCard("Memory Usage", "memorychip", ColorRole::purple,
                  {&DayStats::avgMemoryGB, &DayStats::peakMemoryGB, 0.1, gigabytesText},
                  keyWith("Memory usage trend. Avg %@, peak %@.", {average, peak}));
}

View StatsTab::loadCard(std::string title, std::string symbolName, ColorRole color, const Load& load,
                        TextContent spoken) const {
  const Figures average = figures(load.average);
  const Figures peak = figures(load.peak);
  DayChartContent chart{
      .days = axisDays(),
      .series = {{Mark::area, peak, Color(color, areaOpacity)}, {Mark::line, average, color}},
      .scaleUnit = load.scaleUnit,
      .scaleText = load.text,
      .readOut = dayReadOut([this](std::size_t day) { return dayTitle(day); },
                            {{"Avg", average}, {"Peak", peak}}, load.text)};
  return chartCard(std::move(title), std::move(symbolName), std::move(chart), std::move(spoken),
                   views(legendItem(color, "Avg", load.text(mean(load.average))),
                         legendItem(Color(color, peakSwatchOpacity), "Peak", load.text(highest(load.peak)))));
}

View StatsTab::networkCard() const {
  return dataCard("Network Data", "network", "Network data usage chart.",
                  {"Download", &DayStats::networkDownMB}, {"Upload", &DayStats::networkUpMB});
}

View StatsTab::diskCard() const {
  return dataCard("Disk I/O", "internaldrive", "Disk I/O chart.", {"Read", &DayStats::diskReadMB},
                  {"Write", &DayStats::diskWriteMB});
}

View StatsTab::dataCard(std::string title, std::string symbolName, std::string spoken,
                        const NamedFigure& lower, const NamedFigure& upper) const {
  const Figures below = figures(lower.figure);
  const Figures above = figures(upper.figure);
  double most = 0;
  for (const DayStats& day : stats_) most = std::max(most, day.*lower.figure + day.*upper.figure);
  DayChartContent chart{
      .days = axisDays(),
      .series = {{Mark::bars, below, ColorRole::accent}, {Mark::bars, above, ColorRole::orange}},
      .scaleUnit = megabytesScaleUnit(most),
      .scaleText = megabytesText,
      .readOut = dayReadOut([this](std::size_t day) { return dayTitle(day); },
                            {{lower.name, below}, {upper.name, above}}, megabytesText)};
  return chartCard(std::move(title), std::move(symbolName), std::move(chart), key(std::move(spoken)),
                   views(legendItem(ColorRole::accent, lower.name, megabytesText(sum(lower.figure))),
                         legendItem(ColorRole::orange, upper.name, megabytesText(sum(upper.figure)))));
}

}  // namespace kestrune::ui
