#include "ui/pages/OverviewTab.h"

#include <algorithm>
#include <utility>

#include "ui/components/Card.h"
#include "ui/components/Dashboard.h"
#include "ui/components/Formatters.h"
#include "ui/components/Fraction.h"
#include "ui/components/Gauges.h"
#include "ui/components/NetworkParts.h"
#include "ui/components/SandboxFeatureBanner.h"
#include "ui/components/Series.h"
#include "ui/components/Sparkline.h"
#include "ui/components/StatusColors.h"
#include "ui/pages/OverviewAudio.h"
#include "ui/view/ViewList.h"

namespace kestrune::ui {
namespace {

constexpr auto leading = HorizontalAlignment::leading;
constexpr auto trailing = HorizontalAlignment::trailing;
constexpr auto centered = VerticalAlignment::center;
constexpr auto baseline = VerticalAlignment::firstTextBaseline;
constexpr double gridSpacing = 10;
constexpr std::size_t samplesBeforeCaption = 10;

View caption(View words, ColorRole role = ColorRole::secondary) {
  return std::move(words).withFont(11).withForeground(role);
}

View small(std::string data, ColorRole role = ColorRole::secondary) {
  return caption(verbatim(std::move(data)), role);
}

View headline(std::string figure) {
  return verbatim(std::move(figure)).withMonospacedDigits(32, FontWeight::semibold);
}

View figure(std::string value) {
  return verbatim(std::move(value)).withMonospacedDigits(14, FontWeight::medium).withLineLimit(1);
}

View card(double spacing, std::vector<View> parts) {
  return Card{vstack(spacing, leading, std::move(parts)).fillWidth().fillHeight()};
}

std::string wholePercentText(double percent) {
  return std::to_string(wholePercent(percent)) + "%";
}

std::string gigabyteText(std::uint64_t bytes) {
  return formatGibibytes(gibibytes(static_cast<double>(bytes)), 1);
}

Color storageColor(double fraction) {
  if (fraction < 0.7) return ColorRole::accent;
  return fraction < 0.88 ? statusWarningColor : statusCriticalColor;
}

View legendRow(std::string symbolName, std::string name, std::uint64_t bytes, Color color) {
  return hstack(
      4, centered,
      views(symbol(std::move(symbolName)).withFont(10).withForeground(color.withOpacity(0.7)).width(14),
            caption(text(std::move(name))), spacer(0), figure(gigabyteText(bytes)).withForeground(color)));
}

View ioRow(std::string symbolName, Color color, std::string name, std::string value) {
  return hstack(6, centered,
                views(symbol(std::move(symbolName)).withFont(12).withForeground(color),
                      vstack(1, leading, views(caption(text(std::move(name))), figure(std::move(value))))))
      .fillWidth();
}

View blockDivider() {
  return divider();
}

View processLine(View name, View cpu, View memory) {
  return hstack(innerSpacing, centered,
                views(std::move(name).fillWidth(), std::move(cpu).width(56, trailing),
                      std::move(memory).width(80, trailing)));
}

// One end of the network card's figures: an arrow with a figure, and what it is.
View trafficEnd(bool isSent, std::string value, std::string what) {
  auto arrow = symbol(isSent ? "arrow.up" : "arrow.down").withFont(10).withForeground(ColorRole::secondary);
  auto amount = figure(std::move(value));
  auto line =
      isSent ? views(std::move(arrow), std::move(amount)) : views(std::move(amount), std::move(arrow));
  return vstack(
      2, isSent ? leading : trailing,
      views(hstack(4, centered, std::move(line)), caption(text(std::move(what)), ColorRole::tertiary)));
}

View tinyLegend(std::string name, Color color) {
  return hstack(4, centered, views(symbol("circle.fill").withForeground(color), text(std::move(name))))
      .withFont(9)
      .withForeground(ColorRole::secondary);
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
                            views(cpuCard(), memoryCard(), batteryCard(), systemCard(), networkCard()),
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

// ---- the date

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

// ---- the first row

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
  return card(8, views(caption(label("CPU", "cpu")), headline(wholePercentText(usage)).minWidth(80),
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
  amount.resize(amount.find(' '));  // the unit stands beside it
  auto under = record_
                   ? text("Avg · Peak %@", {formatGibibytes(record_->peakMemoryGB(), 0)})
                   : text("of %@  ·  " + std::string(rawValue(now.pressure)), {formatGibibytes(total, 0)});
  return card(10, views(caption(label("Memory", "memorychip")),
                        hstack(6, baseline,
                               views(headline(std::move(amount)).minWidth(90),
                                     verbatim("GB")
                                         .withMonospacedDigits(14, FontWeight::medium)
                                         .withForeground(ColorRole::secondary))),
                        // A past day's bar shows how things are now.
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
  return card(10, views(hstack(6, centered, std::move(title)), headline(amount),
                        ThinBar{static_cast<double>(percent) / 100, color}, caption(std::move(under))));
}

// ---- the system card

View OverviewTab::systemCard() const {
  return Card{hstack(20, VerticalAlignment::top,
                     views(storageBlock(), blockDivider(), ioBlock(), blockDivider(), uptimeBlock()))
                  .paddingVertical(10)
                  .fillWidth()
                  .fillHeight()};
}

View OverviewTab::storageBlock() const {
  const DiskSnapshot& now = *env().disk->current;
  const std::uint64_t total = record_ ? record_->diskTotalBytes : now.volumeTotalBytes;
  const std::uint64_t used = record_ ? record_->diskUsedBytes : now.volumeUsedBytes;
  const std::uint64_t free = record_ ? record_->diskFreeBytes : now.volumeFreeBytes;
  const double fraction = share(static_cast<double>(used), static_cast<double>(total));
  const Color color = storageColor(fraction);
  const auto ring = [&] {
    auto centre = vstack(
        2, HorizontalAlignment::center,
        views(verbatim(context_.formats.percent(fraction, 0)).withMonospacedDigits(18, FontWeight::semibold),
              caption(text("used"))));
    return zstack({}, views(DonutRing{fraction, 14, color}, std::move(centre))).size(100, 100);
  };
  const auto legend = [&] {
    return vstack(8, leading,
                  views(caption(text("Storage")),
                        vstack(6, leading,
                               views(legendRow("internaldrive", "Total", total, ColorRole::primary),
                                     legendRow("square.fill", "Used", used, color),
                                     legendRow("square", "Free", free, ColorRole::primary)))))
        .fillWidth();
  };
  return firstFit(views(hstack(16, VerticalAlignment::top, views(ring(), legend())),
                        vstack(10, leading, views(ring(), legend()))));
}

View OverviewTab::ioBlock() const {
  const DiskSnapshot& now = *env().disk->current;
  const auto value = [&](double live, double historic) {
    return record_ ? formatBytes(wholeBytes(historic)) : formatRate(live);
  };
  const double read = record_ ? record_->totalDiskReadBytes() : 0;
  const double written = record_ ? record_->totalDiskWriteBytes() : 0;
  return vstack(10, leading,
                views(caption(text(record_ ? "I/O (total)" : "I/O")),
                      ioRow("arrow.down.circle", ColorRole::accent, "Read", value(now.readBytesPerSec, read)),
                      ioRow("arrow.up.circle", ColorRole::orange, "Write",
                            value(now.writeBytesPerSec, written))))
      .width(110, leading);
}

View OverviewTab::uptimeBlock() const {
  SystemUptime up = env().uptime();
  if (record_) up = {record_->uptimeDays, record_->uptimeHours, record_->uptimeMinutes};
  const std::string hours = std::to_string(up.hours) + "h";
  const std::string minutes = std::to_string(up.minutes) + "m";
  std::string large = minutes;
  std::string under;
  if (up.days >= 1) {
    large = std::to_string(up.days) + "d";
    under = hours + " " + minutes;
  } else if (up.hours >= 1) {
    large = hours;
    under = minutes;
  }
  std::vector<View> parts = views(caption(text("Uptime")),
                                  verbatim(std::move(large)).withMonospacedDigits(22, FontWeight::semibold));
  if (!under.empty()) parts.push_back(small(std::move(under)));
  return vstack(4, leading, std::move(parts)).minWidth(60);
}

// ---- the network card

View OverviewTab::networkCard() {
  const SSIDTraffic networks = record_ ? record_->ssidsByTraffic() : SSIDTraffic{};
  std::vector<View> parts = views(networkHeader(), record_ ? historicConnection(networks) : liveConnection(),
                                  divider(), trafficFigures(networks));
  if (!record_) parts.push_back(throughput());
  return card(10, std::move(parts));
}

View OverviewTab::networkHeader() {
  auto title = caption(label("Network", "network"));
  if (!record_) {
    auto reload =
        button(
            symbol("arrow.clockwise").withFont(11, FontWeight::medium).withForeground(ColorRole::secondary),
            [provider = context_.env.network] { provider->reloadConnection(); })
            .help(key("Reload network info"));
    return hstack(innerSpacing, centered, views(std::move(title), spacer(), std::move(reload)));
  }
  const SSIDTraffic networks = record_->ssidsByTraffic();
  if (networks.empty()) return title;
  return hstack(innerSpacing, centered, views(std::move(title), spacer(), filterMenu(networks)));
}

View OverviewTab::filterMenu(const SSIDTraffic& networks) {
  const auto& selected = selectedOverviewSSID.get();
  std::vector<MenuItem> items;
  items.push_back({.title = key("All Networks"),
                   .symbol = selected ? "network" : "checkmark",
                   .action = [this] { selectedOverviewSSID.set(std::nullopt); }});
  if (networks.size() >= 2) items.push_back({.title = {}, .symbol = {}, .isSeparator = true, .action = {}});
  for (const auto& [name, traffic] : networks) {
    items.push_back({.title = verbatimText(name),
                     .symbol = selected == name ? "checkmark" : networkSymbol(name),
                     .action = [this, name] { selectedOverviewSSID.set(name); }});
  }
  auto face = hstack(3, centered,
                     views(symbol("wifi.circle").withFont(11, FontWeight::medium),
                           symbol("chevron.down").withFont(8, FontWeight::medium)))
                  .withForeground(ColorRole::secondary);
  return menu(std::move(face), std::move(items)).help(key("Filter by network"));
}

View OverviewTab::historicConnection(const SSIDTraffic& networks) const {
  const auto& selected = selectedOverviewSSID.get();
  const auto only = networks.size() == 1 ? std::optional(networks.front().first) : std::nullopt;
  const auto named = selected ? selected : only;
  const bool isKnown = selected && record_->networkSSIDs.contains(*selected);
  auto name = isKnown ? verbatim(*selected) : (only ? verbatim(*only) : text("Multiple Networks"));
  return hstack(8, centered,
                views(symbol(named ? networkSymbol(*named) : "network")
                          .withFont(13, FontWeight::medium)
                          .withForeground(ColorRole::accent),
                      std::move(name).withFont(13, FontWeight::semibold).withLineLimit(1)));
}

View OverviewTab::liveConnection() const {
  const NetworkSnapshot& now = *env().network->current;
  return hstack(
      8, centered,
      views(
          symbol(connectionSymbol(now)).withFont(13, FontWeight::medium).withForeground(ColorRole::accent),
          vstack(2, leading,
                 views(text(now.interfaceName).withFont(13, FontWeight::semibold), liveConnectionDetail()))));
}

View OverviewTab::liveConnectionDetail() const {
  const NetworkSnapshot& now = *env().network->current;
  if (now.ssid) {
    const auto name = [&] { return small(*now.ssid).withLineLimit(1); };
    if (!now.ipAddress) return name();
    return firstFit(views(
        hstack(0, baseline, views(small(*now.ssid), small(" · " + *now.ipAddress, ColorRole::tertiary))),
        vstack(1, leading, views(name(), small(*now.ipAddress, ColorRole::tertiary)))));
  }
  if (now.needsLocation) return allowLocationButton(context_.workspace, 10);
  return now.ipAddress ? small(*now.ipAddress, ColorRole::tertiary) : View();
}

View OverviewTab::trafficFigures(const SSIDTraffic& networks) const {
  View sent;
  View received;
  if (record_) {
    const auto& selected = selectedOverviewSSID.get();
    const auto found =
        selected ? std::ranges::find(networks, *selected, &SSIDTraffic::value_type::first) : networks.end();
    const bool isFiltered = found != networks.end();
    const double up = isFiltered ? found->second.uploadBytes : record_->totalNetworkUpBytes();
    const double down = isFiltered ? found->second.downloadBytes : record_->totalNetworkDownBytes();
    sent = trafficEnd(true, formatBytes(wholeBytes(up)), "Sent");
    received = trafficEnd(false, formatBytes(wholeBytes(down)), "Received");
  } else {
    const NetworkSnapshot& now = *env().network->current;
    sent = trafficEnd(true, formatRate(now.uploadBytesPerSec), "Upload");
    received = trafficEnd(false, formatRate(now.downloadBytesPerSec), "Download");
  }
  return hstack(innerSpacing, centered, views(std::move(sent).minWidth(75), spacer(), std::move(received)));
}

View OverviewTab::throughput() const {
  const Series down = seriesOf(*env().network->history, &NetworkSnapshot::downloadBytesPerSec);
  const Series up = seriesOf(*env().network->history, &NetworkSnapshot::uploadBytesPerSec);
  const DualSparklineView chart{down.values, up.values, ColorRole::accent, ColorRole::orange,
                                "Dual metric trend"};
  auto graph = chart.body().withReadOut(readOut(context_, {"Up", up}, {"Down", down}, formatRate)).height(24);
  return vstack(4, leading,
                views(std::move(graph), hstack(10, centered,
                                               views(tinyLegend("Up", Color(ColorRole::orange, 0.75)),
                                                     tinyLegend("Down", ColorRole::accent)))));
}

// ---- below the grid

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
