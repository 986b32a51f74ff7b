#include "ui/pages/overview/OverviewTab.h"

#include <algorithm>
#include <utility>

#include "ui/components/Card.h"
#include "ui/components/Dashboard.h"
#include "ui/components/Formatters.h"
#include "ui/components/Fraction.h"
#include "ui/components/Gauges.h"
#include "ui/components/SandboxFeatureBanner.h"
#include "ui/components/Series.h"
#include "ui/components/Sparkline.h"
#include "ui/components/StatusColors.h"
#include "ui/pages/overview/OverviewParts.h"
#include "ui/view/View.h"

namespace kestrune::ui {
namespace {

constexpr auto leading = HorizontalAlignment::leading;
constexpr auto trailing = HorizontalAlignment::trailing;
constexpr auto centered = VerticalAlignment::center;
constexpr auto baseline = VerticalAlignment::firstTextBaseline;
constexpr double gridSpacing = 10;
constexpr std::size_t samplesBeforeCaption = 10;

std::string wholePercentText(double percent) {
  return std::to_string(wholePercent(percent)) + "%";
}

View processLine(View name, View cpu, View memory) {
  return hstack(innerSpacing, centered,
                views(std::move(name).fillWidth(), std::move(cpu).width(56, trailing),
                      std::move(memory).width(80, trailing)));
}

}  // namespace

View OverviewTab::body() {
  forgetFilterOnAnotherDay();
  const auto& date = env().selectedDate.get();
  record_ = date ? context_.env.historyStore.load(*date) : std::nullopt;
  std::vector<View> parts;
  parts.push_back(dateStrip());
  if (isHistoric() && !record_) {
    parts.push_back(emptyState());
  } else {
    parts.push_back(columns(3, gridSpacing,
                            views(cpuCard(), memoryCard(), batteryCard(),
                                  systemCard(context_, record_ ? &*record_ : nullptr), networkCard()),
                            {1, 1, 1, 2, 1}));
    parts.push_back(audioSection());
    parts.push_back(topProcesses());
  }
  return scroll(vstack(12, leading, std::move(parts)).padding(16));
}

void OverviewTab::forgetFilterOnAnotherDay() {
  const auto& date = env().selectedDate.get();
  if (std::exchange(shownDate_, date) != date) selectedOverviewSSID.set(std::nullopt);
}

// -- The date

std::string OverviewTab::dateLabel() const {
  const auto& date = env().selectedDate.get();
  if (!date) return "Live";
  if (env().isYesterday(*date)) return "Yesterday";
  return context_.formats.day(env().dayFiles.dayName(*date));
}

View OverviewTab::dateStrip() {
  const auto shift = [&env = context_.env](int days) {
    return [&env, days] { env.shiftSelectedDate(days); };
  };
  const auto arrow = [](const char* name) {
    return symbol(name).withFont(11, FontWeight::semibold).padding(4);
  };
  auto back = button(arrow("chevron.left"), shift(-1)).help(key("Previous day")).disabled(!env().canGoBack());
  auto forward = button(arrow("chevron.right"), shift(1))
                     .help(key("Next day"))
                     .disabled(!isHistoric())
                     .withOpacity(isHistoric() ? 1 : 0.3);
  const std::string label = dateLabel();
  const bool isWord = label == "Live" || label == "Yesterday";
  auto day = (isWord ? text(label) : verbatim(label)).withFont(12, FontWeight::medium).minWidth(80);
  std::vector<View> parts = views(std::move(back), std::move(day), std::move(forward));
  if (isHistoric()) {
    parts.push_back(spacer());
    parts.push_back(
        button(text("Live").withFont(11, FontWeight::semibold).withForeground(statusGoodColor).padding(4),
               [&env = context_.env] { env.selectedDate.set(std::nullopt); }));
  }
  return hstack(10, centered, std::move(parts))
      .withForeground(ColorRole::secondary)
      .padding({.top = 0, .leading = 2, .bottom = 2, .trailing = 2});
}

View OverviewTab::emptyState() const {
  return vstack(12, HorizontalAlignment::center,
                views(symbol("clock.badge.questionmark").withFont(40).withForeground(ColorRole::secondary),
                      text("No data for this day")
                          .withFont(13, FontWeight::semibold)
                          .withForeground(ColorRole::secondary),
                      text("Kestrune records data in the background while running.")
                          .withFont(10)
                          .withForeground(ColorRole::tertiary)))
      .fillWidth(HorizontalAlignment::center)
      .padding({.top = 60, .leading = 0, .bottom = 0, .trailing = 0});
}

// -- The first row

View OverviewTab::cpuCard() const {
  const auto& history = env().cpu->history.get();
  std::vector<double> fractions;
  ReadOut said;
  View under;
  if (record_) {
    fractions = record_->hourlyCPUFractions();
    said = hourlyReadOut(*record_);
    under = text("Peak %@  ·  Hourly avg, 24 h", {wholePercentText(record_->peakCPU())});
  } else {
    Series series = seriesOf(history, [](const CPUSnapshot& each) { return each.usagePercent / 100; });
    fractions = series.values;
    said = readOut(context_, std::move(series), percentText(context_));
    under = history.size() < samplesBeforeCaption ? text("Collecting…")
                                                  : text("Last %@ s", {std::to_string(history.size())});
  }
  const double usage = record_ ? record_->averageCPU() : env().cpu->current->usagePercent;
  const SparklineView chart{std::move(fractions), ColorRole::accent, false, "Metric trend"};
  return gridCard(8, views(caption(label("CPU", "cpu")), headline(wholePercentText(usage)).minWidth(80),
                           chart.body().withReadOut(std::move(said)).height(28),
                           caption(std::move(under), ColorRole::tertiary)));
}

ReadOut OverviewTab::hourlyReadOut(const DailySummary& record) const {
  std::vector<int> hours;
  hours.reserve(record.hours.size());
  for (const auto& bucket : record.hours) hours.push_back(static_cast<int>(bucket.hour));
  return [hours = std::move(hours), fractions = record.hourlyCPUFractions(),
          &formats = context_.formats](std::size_t point) -> std::vector<TextContent> {
    constexpr int secondsPerHour = 3600;
    if (point >= hours.size()) return {};
    return {verbatimText(formats.percent(fractions[point], 1) + " · " +
                         formats.time(hours[point] * secondsPerHour, LocaleFormats::Detail::minutes))};
  };
}

View OverviewTab::memoryCard() const {
  const MemorySnapshot& now = *env().memory->current;
  const double total = gibibytes(static_cast<double>(now.totalBytes));
  const double used = record_ ? record_->averageMemoryGB() : gibibytes(static_cast<double>(now.usedBytes));
  const double fraction = record_ ? used / std::max(total, 1.0) : share(used, total);
  std::string amount = formatGibibytes(used, 1);
  amount.resize(amount.find(' '));  // the unit is a text of its own
  auto under = record_
                   ? text("Avg · Peak %@", {formatGibibytes(record_->peakMemoryGB(), 0)})
                   : text("of %@  ·  " + std::string(rawValue(now.pressure)), {formatGibibytes(total, 0)});
  return gridCard(10, views(caption(label("Memory", "memorychip")),
                            hstack(6, baseline,
                                   views(headline(std::move(amount)).minWidth(90),
                                         verbatim("GB")
                                             .withMonospacedDigits(14, FontWeight::medium)
                                             .withForeground(ColorRole::secondary))),
                            // The bar of a past day also has the colour of the current pressure.
                            ThinBar{fraction, pressureColor(now.pressure)}, caption(std::move(under))));
}

View OverviewTab::batteryCard() const {
  const BatterySnapshot& now = *env().battery->current;
  const std::int64_t percent = record_ ? record_->batteryEndPercent() : now.percent;
  std::vector<View> title = views(caption(label("Battery", "battery.75percent")));
  if (!record_ && now.isCharging) {
    title.push_back(symbol("bolt.fill").withFont(11).withForeground(statusGoodColor));
  }
  const Color color = percent <= 19 ? statusCriticalColor : statusGoodColor;
  const std::string amount = std::to_string(percent) + "%";
  const std::string remaining = now.timeRemainingText();
  auto under = record_ ? text("Started %@  ·  Ended %@",
                              {std::to_string(record_->batteryStartPercent()) + "%", amount})
                       : (now.tellsTime() ? verbatim(remaining) : text(remaining));
  return gridCard(10, views(hstack(6, centered, std::move(title)), headline(amount),
                            ThinBar{static_cast<double>(percent) / 100, color}, caption(std::move(under))));
}

View OverviewTab::networkCard() {
  return record_ ? pastNetworkCard(*record_, selectedOverviewSSID) : liveNetworkCard(context_);
}

// -- Below the grid

View OverviewTab::audioSection() const {
  if (record_) {
    return Card{hstack(10, centered,
                       views(symbol("waveform.slash").withFont(13, FontWeight::medium),
                             text("Audio activity is not recorded in history").withFont(11)))
                    .withForeground(ColorRole::tertiary)
                    .paddingVertical(6)
                    .fillWidth()};
  }
  return audioCard(*env().audio->current);
}

View OverviewTab::topProcesses() const {
  if (context_.isSandboxed) {
    return SandboxFeatureBanner("Top processes unavailable",
                                "App Store does not allow access to per-process CPU and memory data.",
                                context_.preferences);
  }
  std::vector<View> lines;
  const auto add = [&](const std::string& name, double cpuPercent, std::uint64_t memoryBytes) {
    lines.push_back(processLine(verbatim(name).withLineLimit(1),
                                figure(context_.formats.percent(cpuPercent / 100, 1)),
                                figure(formatBytes(memoryBytes)).withForeground(ColorRole::secondary))
                        .paddingVertical(6));
    lines.push_back(divider().withOpacity(0.35));
  };
  if (record_) {
    for (const auto& process : record_->topProcesses()) {
      const auto minutes = static_cast<std::uint64_t>(std::max<std::int64_t>(process.cpuCount, 0));
      add(process.name, process.avgCPU(), minutes == 0 ? 0 : process.memorySum / minutes);
    }
  } else {
    for (const auto& process : env().cpu->current->topProcesses) {
      add(process.name, process.cpuPercent, process.memoryBytes);
    }
  }
  auto header = processLine(text("Process"), text("CPU"), text("Memory"))
                    .withFont(11)
                    .withForeground(ColorRole::secondary)
                    .padding({.top = 0, .leading = 0, .bottom = 8, .trailing = 0});
  auto rows = views(std::move(header), divider(), vstack(0, leading, std::move(lines)));
  return Card{vstack(
      8, leading,
      views(text("Top processes").withFont(13, FontWeight::semibold), vstack(0, leading, std::move(rows))))};
}

}  // namespace kestrune::ui
