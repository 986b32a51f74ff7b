#include "ui/pages/MemoryTab.h"

#include <string>
#include <utility>

#include "ui/components/Card.h"
#include "ui/components/Dashboard.h"
#include "ui/components/Formatters.h"
#include "ui/components/Fraction.h"
#include "ui/components/SandboxFeatureBanner.h"
#include "ui/components/StatusColors.h"
#include "ui/components/Trends.h"
#include "ui/view/View.h"

namespace kestrune::ui {
namespace {

constexpr auto centered = VerticalAlignment::center;
constexpr double memoryColumnWidth = 80;

View usageBar(double fraction, Color fill, double height, double cornerRadius) {
  return View(BarContent{.fraction = fraction,
                         .track = ColorRole::quaternary,
                         .fill = fill,
                         .cornerRadius = cornerRadius})
      .height(height);
}

View pressureRow(View name, View value) {
  return hstack(innerSpacing, centered,
                views(std::move(name).withForeground(ColorRole::secondary), spacer(),
                      std::move(value).withMonospacedDigits(13)));
}

View breakdownRow(std::string name, double gigabytes, double totalGigabytes, Color color) {
  return hstack(innerSpacing, centered,
                views(caption(text(std::move(name))).width(110, HorizontalAlignment::leading),
                      usageBar(clampedFraction(share(gigabytes, totalGigabytes)), color, 8, 4),
                      verbatim(formatGibibytes(gigabytes, 1))
                          .withMonospacedDigits(11)
                          .width(60, HorizontalAlignment::trailing)));
}

View tableRow(View name, View memory) {
  return hstack(innerSpacing, centered,
                views(std::move(name).fillWidth(),
                      std::move(memory).width(memoryColumnWidth, HorizontalAlignment::trailing)));
}

View processRow(const MemorySnapshot::ProcessInfo& process) {
  return tableRow(verbatim(process.name).withLineLimit(1), verbatim(formatBytes(process.memoryBytes))
                                                               .withForeground(ColorRole::secondary)
                                                               .withMonospacedDigits(14))
      .paddingVertical(5)
      .withKey(std::to_string(process.id));
}

}  // namespace

View MemoryTab::body() {
  return dashboard(
      views(cardRow(views(usedCard(), pressureCard())), breakdown(), usageHistory(), topProcesses()));
}

View MemoryTab::usedCard() const {
  const MemorySnapshot& now = *memory().current;
  const auto used = static_cast<double>(now.usedBytes);
  const auto total = static_cast<double>(now.totalBytes);
  auto amount = hstack(innerSpacing, VerticalAlignment::firstTextBaseline,
                       views(verbatim(formatGibibytes(gibibytes(used), 1)).withMonospacedDigits(28),
                             caption(text("%@ total", {formatGibibytes(gibibytes(total), 0)}))));
  return Card{section(views(sectionHeader(label("Memory Used", "memorychip")), std::move(amount),
                            usageBar(clampedFraction(share(used, total)),
                                     pressureColor(now.pressure).withOpacity(0.8), 8, 4)))
                  .fillHeight()};
}

View MemoryTab::pressureCard() const {
  const MemorySnapshot& now = *memory().current;
  auto level = hstack(6, centered, views(dot(10, pressureColor(now.pressure)), text(rawValue(now.pressure))));
  auto swap = now.swapUsedBytes == 0 ? text("None") : verbatim(formatBytes(now.swapUsedBytes));
  return Card{section(views(pressureRow(label("Pressure", "gauge.medium"), std::move(level)),
                            pressureRow(text("Wired"), verbatim(formatBytes(now.wiredBytes))),
                            pressureRow(text("Compressed"), verbatim(formatBytes(now.compressedBytes))),
                            pressureRow(text("Swap Used"), std::move(swap))))};
}

View MemoryTab::breakdown() const {
  const MemorySnapshot& now = *memory().current;
  const auto inGigabytes = [](std::uint64_t bytes) { return gibibytes(static_cast<double>(bytes)); };
  const double total = inGigabytes(now.totalBytes);
  return section(views(sectionHeader(text("Memory breakdown")),
                       breakdownRow("App Memory", inGigabytes(now.appBytes), total, ColorRole::accent),
                       breakdownRow("Wired", inGigabytes(now.wiredBytes), total, ColorRole::secondary),
                       breakdownRow("Compressed", inGigabytes(now.compressedBytes), total, ColorRole::orange),
                       breakdownRow("Free", total - inGigabytes(now.usedBytes), total, statusGoodColor)));
}

View MemoryTab::usageHistory() {
  return UsageHistory{
      .context = context_,
      .percentages = *memory().usageHistory,
      .choices = memTimeRanges,
      .selected = static_cast<std::size_t>(timeRange.get()),
      .onSelect = [this](std::size_t index) { timeRange.set(static_cast<MemTimeRange>(index)); },
      .color = ColorRole::purple,
      .label = "Memory usage history"}
      .body();
}

View MemoryTab::topProcesses() const {
  if (context_.isSandboxed) {
    return SandboxFeatureBanner("Top processes unavailable",
                                "App Store does not allow access to per-process memory data.",
                                context_.preferences);
  }
  std::vector<View> rows;
  for (const auto& process : memory().current->topProcesses) rows.push_back(processRow(process));
  return section(views(sectionHeader(text("Top processes by memory")),
                       table(tableRow(text("Process"), text("Memory")), std::move(rows))));
}

}  // namespace kestrune::ui
