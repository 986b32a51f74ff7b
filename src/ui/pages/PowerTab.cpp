#include "ui/pages/PowerTab.h"

#include <algorithm>
#include <cmath>
#include <ranges>
#include <string>
#include <utility>

#include <fmt/format.h>

#include "ui/components/Card.h"
#include "ui/components/Dashboard.h"
#include "ui/components/Gauges.h"
#include "ui/components/Series.h"
#include "ui/components/Sparkline.h"
#include "ui/components/StatusColors.h"
#include "ui/view/View.h"

namespace kestrune::ui {
namespace {

constexpr auto leading = HorizontalAlignment::leading;
constexpr auto centered = VerticalAlignment::center;
constexpr int trendDays = 7;

std::string chargeSymbol(const BatterySnapshot& battery) {
  if (battery.isCharging) return "battery.100percent.bolt";
  if (battery.percent >= 75) return "battery.100percent";
  if (battery.percent >= 50) return "battery.75percent";
  return battery.percent >= 25 ? "battery.50percent" : "battery.25percent";
}

Color chargeColor(const BatterySnapshot& battery) {
  if (battery.isCharging || battery.isFullyCharged) return statusGoodColor;
  return battery.percent > 19 ? Color(ColorRole::primary) : statusCriticalColor;
}

Color conditionColor(BatteryCondition condition) {
  switch (condition) {
    case BatteryCondition::good:
      return statusGoodColor;
    case BatteryCondition::fair:
      return statusWarningColor;
    case BatteryCondition::poor:
      return statusCriticalColor;
  }
  return {};
}

double watts(const BatterySnapshot& battery) {
  return std::abs(static_cast<double>(battery.voltageMV) * static_cast<double>(battery.amperageMa)) / 1e6;
}

std::string wattsText(const BatterySnapshot& battery) {
  return fmt::format("{:.1f} W", watts(battery));
}

std::string temperatureText(double celsius) {
  return fmt::format("{:.1f} °C", celsius);
}

std::string percentOf(std::int64_t value) {
  return std::to_string(value) + "%";
}

View row(std::string name, View value) {
  return captionedRow(text(std::move(name)), std::move(value).withMonospacedDigits(14));
}

View cell(std::string name, std::string value) {
  return captioned(4, std::move(name), verbatim(std::move(value)).withMonospacedDigits(14))
      .frame({.fixed = {}, .min = {}, .max = unlimited}, {.fixed = 44, .min = {}, .max = {}},
             {leading, centered});
}

}  // namespace

PowerTab::PowerTab(const ViewContext& context) : context_(context) {
  const AppEnvironment& env = context.env;
  const auto records = env.historyStore.daysBefore(context.loop.clock().now(), trendDays);
  for (const DailySummary& record : records | std::views::reverse) {
    if (record.batteryHealthPercent >= 1) healthPercents_.push_back(record.batteryHealthPercent);
  }
  const std::int64_t today = env.recorder->current.batteryHealthPercent;
  if (today >= 1) healthPercents_.push_back(today);
}

View PowerTab::body() {
  return dashboard(views(cardRow(views(batteryCard(), sourceCard())), electricalCard(), healthCard(),
                         healthTrend(), chargeHistory()));
}

View PowerTab::batteryCard() const {
  const BatterySnapshot& now = battery();
  const std::string remaining = now.timeRemainingText();
  View line = now.tellsTime() ? verbatim(remaining) : text(remaining);
  if (now.isFullyCharged) line = text("Fully charged");
  const Color color = chargeColor(now);
  auto figure = hstack(innerSpacing, centered,
                       views(symbol(chargeSymbol(now)).withFont(24).withForeground(color),
                             verbatim(percentOf(now.percent)).withMonospacedDigits(28)));
  return Card{section(views(sectionHeader(text("Battery")), std::move(figure), caption(std::move(line)),
                            ThinBar{static_cast<double>(now.percent) / 100, color}))
                  .fillHeight()};
}

View PowerTab::sourceCard() const {
  const BatterySnapshot& now = battery();
  std::string state = "On Battery";
  if (now.isCharging) state = "Charging";
  if (now.isFullyCharged) state = "Fully Charged";
  std::vector<View> parts =
      views(sectionHeader(label("Power Source", "powerplug")), text(std::move(state)).withFont(14));
  if (now.voltageMV >= 1 && now.amperageMa != 0) {
    parts.push_back(row(now.isCharging ? "Charging" : "Draw", verbatim(wattsText(now))));
  }
  if (now.temperatureCelsius) {
    parts.push_back(row("Temperature", verbatim(temperatureText(*now.temperatureCelsius))));
  }
  return Card{section(std::move(parts)).fillHeight()};
}

View PowerTab::electricalCard() const {
  const BatterySnapshot& now = battery();
  std::vector<View> cells =
      views(cell("Voltage", fmt::format("{:.2f} V", static_cast<double>(now.voltageMV) / 1000.0)),
            cell("Current", std::to_string(now.amperageMa) + " mA"), cell("Power", wattsText(now)));
  if (now.temperatureCelsius) cells.push_back(cell("Temp", temperatureText(*now.temperatureCelsius)));
  return Card{
      section(views(sectionHeader(text("Electrical")), hstack(innerSpacing, centered, std::move(cells))))};
}

View PowerTab::healthCard() const {
  const BatterySnapshot& now = battery();
  std::vector<View> rows = views(
      row("Condition", text(kestrune::label(now.condition)).withForeground(conditionColor(now.condition))),
      row("Health", verbatim(percentOf(now.healthPercent))),
      row("Cycle Count", verbatim(std::to_string(now.cycleCount))));
  const auto capacity = [&rows](std::string name, std::int64_t milliampereHours) {
    if (milliampereHours < 1) return;
    rows.push_back(row(std::move(name), verbatim(std::to_string(milliampereHours) + " mAh")));
  };
  capacity("Current Capacity", now.currentCapacityMah);
  capacity("Design Capacity", now.designCapacityMah);
  for (View& each : rows) each = std::move(each).paddingVertical(5);
  return Card{section(views(sectionHeader(text("Battery Health")), dividedRows(std::move(rows))))};
}

View PowerTab::healthTrend() const {
  if (healthPercents_.empty()) return {};
  const auto [low, high] = std::ranges::minmax(healthPercents_);
  auto title = sectionHeader(text("Health trend (7 days)"));
  if (high - low < 2) {
    auto words = vstack(2, leading,
                        views(text("Stable at %@", {percentOf(low)}).withFont(14),
                              caption(text("No measurable change in the past 7 days"))));
    return Card{section(
        views(std::move(title),
              hstack(innerSpacing, centered,
                     views(symbol("checkmark.circle.fill").withFont(18).withForeground(ColorRole::green),
                           std::move(words)))))};
  }
  std::vector<double> fractions;
  fractions.reserve(healthPercents_.size());
  for (const std::int64_t percent : healthPercents_)
    fractions.push_back(static_cast<double>(percent) / 100.0);
  const SparklineView chart{std::move(fractions), ColorRole::green, true,
                            "Battery health over the past 7 days"};
  auto graph = chart.body().withReadOut([percents = healthPercents_](std::size_t point) {
    std::vector<TextContent> said;
    if (point < percents.size()) said.push_back(verbatimText(percentOf(percents[point])));
    return said;
  });
  return Card{section(views(std::move(title), std::move(graph).height(48),
                            edgeCaptions("7 days ago", "Today", ColorRole::tertiary)))};
}

View PowerTab::chargeHistory() const {
  const Series series = seriesOf(*context_.env.battery->history, [](const BatterySnapshot& each) {
    return static_cast<double>(each.percent) / 100.0;
  });
  const SparklineView chart{series.values, ColorRole::accent, false, "Metric trend"};
  auto graph =
      chart.body().withReadOut(readOut(context_, series, [&formats = context_.formats](double fraction) {
        return formats.percent(fraction, 0);
      }));
  return Card{section(views(sectionHeader(label("Charge history  (last 30 min)", "chart.xyaxis.line")),
                            std::move(graph).height(60), edgeCaptions("0%", "100%", ColorRole::tertiary)))};
}

}  // namespace kestrune::ui
