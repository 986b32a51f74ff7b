#include "ui/CPUTab.h"

#include <string>
#include <utility>

#include "ui/Card.h"
#include "ui/CoreBar.h"
#include "ui/Formatters.h"
#include "ui/SandboxFeatureBanner.h"
#include "ui/Sparkline.h"
#include "ui/ViewList.h"

namespace kestrune::ui {
namespace {

constexpr auto leading = HorizontalAlignment::leading;
constexpr auto centered = VerticalAlignment::center;
constexpr double sectionSpacing = 20;
constexpr double innerSpacing = 8;
constexpr double cpuColumnWidth = 60;
constexpr double memoryColumnWidth = 80;

View header(View titled) {
  return std::move(titled).withFont(13).withForeground(ColorRole::secondary);
}

View edgeCaptions(std::string atStart, std::string atEnd, Color color) {
  return hstack(innerSpacing, centered, views(text(std::move(atStart)), spacer(), text(std::move(atEnd))))
      .withFont(11)
      .withForeground(color);
}

View chipRow(std::string caption, std::string value) {
  return hstack(innerSpacing, VerticalAlignment::firstTextBaseline,
                views(text(std::move(caption)).withFont(11).withForeground(ColorRole::secondary), spacer(),
                      verbatim(std::move(value)).withMonospacedDigits(14)));
}

View tableRow(View name, View cpu, View memory) {
  return hstack(
      innerSpacing, centered,
      views(std::move(name).fillWidth(), std::move(cpu).width(cpuColumnWidth, HorizontalAlignment::trailing),
            std::move(memory).width(memoryColumnWidth, HorizontalAlignment::trailing)));
}

}  // namespace

View CPUTab::body() {
  auto cards = hstack(sectionSpacing, VerticalAlignment::top, views(usageCard(), chipCard())).evenlyTall();
  return scroll(
      vstack(sectionSpacing, leading, views(std::move(cards), perCore(), usageHistory(), topProcesses()))
          .padding(20));
}

View CPUTab::usageCard() const {
  const auto& history = cpu().history.get();
  std::vector<double> fractions;
  fractions.reserve(history.size());
  for (std::size_t i = 0; i < history.size(); ++i) fractions.push_back(history[i].value.usagePercent / 100);

  const SparklineView trend{std::move(fractions), ColorRole::accent, false, "Metric trend"};
  const std::string percent = std::to_string(wholePercent(cpu().current->usagePercent)) + "%";
  return Card{vstack(innerSpacing, leading,
                     views(header(label("CPU Usage", "cpu")), verbatim(percent).withMonospacedDigits(28),
                           trend.body().height(40), edgeCaptions("60s ago", "Now", ColorRole::tertiary)))};
}

View CPUTab::chipCard() const {
  const ChipInfo& chip = cpu().chipInfo;
  return Card{vstack(innerSpacing, leading,
                     views(header(label("Chip", "memorychip")), chipRow("Model", chip.name),
                           chipRow("Cores", chip.coreDescription())))
                  .fillHeight()};
}

View CPUTab::perCore() const {
  std::vector<View> cells;
  for (const CoreBar& bar : coreBars(*cpu().current, cpu().chipInfo, *cpu().history)) cells.push_back(bar);
  return vstack(innerSpacing, leading,
                views(header(text("Per-core usage")), adaptiveGrid(180, 10, std::move(cells))));
}

View CPUTab::usageHistory() {
  std::vector<TextContent> labels;
  labels.reserve(cpuTimeRanges.size());
  for (const auto& choice : cpuTimeRanges) labels.push_back(key(std::string(choice.label)));
  const auto selected = static_cast<std::size_t>(timeRange.get());
  auto picker = segmentedPicker(std::move(labels), static_cast<int>(selected),
                                [this](int index) { timeRange.set(static_cast<CPUTimeRange>(index)); });

  const SparklineView chart{usageSeries(*cpu().usageHistory, cpuTimeRanges.at(selected).samples),
                            ColorRole::accent, false, "Metric trend"};
  return vstack(
      innerSpacing, leading,
      views(hstack(innerSpacing, centered,
                   views(header(label("Usage history", "chart.xyaxis.line")), spacer(), std::move(picker))),
            chart.body().height(60), edgeCaptions("0%", "100%", ColorRole::secondary)));
}

View CPUTab::topProcesses() const {
  if (context_.isSandboxed) {
    return SandboxFeatureBanner("Top processes unavailable",
                                "App Store does not allow access to per-process CPU data.",
                                context_.preferences);
  }
  return vstack(innerSpacing, leading, views(header(text("Top processes")), processTable()));
}

View CPUTab::processTable() const {
  std::vector<View> rows;
  rows.push_back(tableRow(text("Process"), text("CPU"), text("Memory"))
                     .withFont(11)
                     .withForeground(ColorRole::secondary));
  for (const auto& process : cpu().current->topProcesses) {
    if (rows.size() > 1) rows.push_back(divider().withOpacity(0.4));
    rows.push_back(processRow(process));
  }
  return vstack(0, leading, std::move(rows));
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
