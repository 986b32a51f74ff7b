#include "ui/pages/CPUTab.h"

#include <string>
#include <utility>

#include "ui/components/Card.h"
#include "ui/components/CoreBar.h"
#include "ui/components/Dashboard.h"
#include "ui/components/Formatters.h"
#include "ui/components/SandboxFeatureBanner.h"
#include "ui/components/Series.h"
#include "ui/components/Sparkline.h"
#include "ui/components/Trends.h"
#include "ui/view/View.h"

namespace kestrune::ui {
namespace {

constexpr auto centered = VerticalAlignment::center;
constexpr double cpuColumnWidth = 60;
constexpr double memoryColumnWidth = 80;

View tableRow(View name, View cpu, View memory) {
  return hstack(
      innerSpacing, centered,
      views(std::move(name).fillWidth(), std::move(cpu).width(cpuColumnWidth, HorizontalAlignment::trailing),
            std::move(memory).width(memoryColumnWidth, HorizontalAlignment::trailing)));
}

}  // namespace

View CPUTab::body() {
  return dashboard(views(cardRow(views(usageCard(), chipCard())), perCore(), usageHistory(), topProcesses()));
}

View CPUTab::usageCard() const {
  const Series series =
      seriesOf(*cpu().history, [](const CPUSnapshot& each) { return each.usagePercent / 100; });
  const SparklineView trend{series.values, ColorRole::accent, false, "Metric trend"};
  const std::string percent = std::to_string(wholePercent(cpu().current->usagePercent)) + "%";
  return Card{
      section(views(sectionHeader(label("CPU Usage", "cpu")), verbatim(percent).withMonospacedDigits(28),
                    trend.body().withReadOut(readOut(context_, series, percentText(context_))).height(40),
                    edgeCaptions("60s ago", "Now", ColorRole::tertiary)))};
}

View CPUTab::chipCard() const {
  const ChipInfo& chip = cpu().chipInfo;
  const auto row = [](std::string name, std::string value) {
    return captionedRow(text(std::move(name)), verbatim(std::move(value)).withMonospacedDigits(14));
  };
  return Card{section(views(sectionHeader(label("Chip", "memorychip")), row("Model", chip.name),
                            row("Cores", chip.coreDescription())))
                  .fillHeight()};
}

View CPUTab::perCore() const {
  std::vector<View> cells;
  const auto& history = cpu().history.get();
  for (const CoreBar& bar : coreBars(*cpu().current, cpu().chipInfo, history)) {
    cells.push_back(bar.body(coreReadOut(bar, history)));
  }
  return section(views(sectionHeader(text("Per-core usage")), adaptiveGrid(180, 10, std::move(cells))));
}

ReadOut CPUTab::coreReadOut(const CoreBar& bar, const HistoryRing<CPUSnapshot>& history) const {
  Series series{.values = bar.history, .dates = {}};
  series.dates.reserve(bar.history.size());
  // A core that appeared later has only the newest samples.
  for (std::size_t i = history.size() - bar.history.size(); i < history.size(); ++i) {
    series.dates.push_back(history[i].date);
  }
  return readOut(context_, std::move(series), percentText(context_));
}

View CPUTab::usageHistory() {
  return UsageHistory{
      .context = context_,
      .percentages = *cpu().usageHistory,
      .choices = cpuTimeRanges,
      .selected = static_cast<std::size_t>(timeRange.get()),
      .onSelect = [this](std::size_t index) { timeRange.set(static_cast<CPUTimeRange>(index)); },
      .color = ColorRole::accent,
      .label = "Metric trend"}
      .body();
}

View CPUTab::topProcesses() const {
  if (context_.isSandboxed) {
    return SandboxFeatureBanner("Top processes unavailable",
                                "App Store does not allow access to per-process CPU data.",
                                context_.preferences);
  }
  return section(views(sectionHeader(text("Top processes")), processTable()));
}

View CPUTab::processTable() const {
  std::vector<View> rows;
  for (const auto& process : cpu().current->topProcesses) rows.push_back(processRow(process));
  return table(tableRow(text("Process"), text("CPU"), text("Memory")), std::move(rows));
}

View CPUTab::processRow(const CPUSnapshot::ProcessInfo& process) const {
  const std::string& path = process.executablePath.empty() ? process.name : process.executablePath;
  return tableRow(verbatim(process.name).withLineLimit(1).help(verbatimText(path)),
                  verbatim(context_.formats.percent(process.cpuPercent / 100, 1)).withMonospacedDigits(14),
                  verbatim(formatBytes(process.memoryBytes)).withForeground(ColorRole::secondary))
      .paddingVertical(5)
      .withKey(std::to_string(process.id));
}

}  // namespace kestrune::ui
