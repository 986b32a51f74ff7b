#include "ui/window/MenuBarPopover.h"

#include <string>
#include <utility>

#include "settings/Settings.h"
#include "ui/components/AudioParts.h"
#include "ui/components/Effects.h"
#include "ui/components/Formatters.h"
#include "ui/components/Fraction.h"
#include "ui/components/Series.h"
#include "ui/components/Sparkline.h"
#include "ui/components/StatusColors.h"
#include "ui/view/View.h"
#include "ui/window/MainTab.h"

namespace kestrune::ui {
namespace {

constexpr auto leading = HorizontalAlignment::leading;
constexpr auto centered = VerticalAlignment::center;
constexpr double rowSpacing = 8;
constexpr double edgePadding = 12;
constexpr std::size_t listedProcesses = 3;

View metricRow(std::string label, View value, View chart = {}) {
  return hstack(rowSpacing, centered,
                views(text(std::move(label)).withForeground(ColorRole::secondary).width(70, leading),
                      std::move(value).withMonospacedDigits(14, FontWeight::medium).withLineLimit(1),
                      spacer(0), std::move(chart)))
      .paddingHorizontal(edgePadding)
      .paddingVertical(3);
}

// The figures of a ring, oldest first, as a small line.
template <class Snapshot, class Figure>
View trend(const HistoryRing<Snapshot>& ring, Figure figure) {
  return SparklineView{seriesOf(ring, figure).values, ColorRole::accent, true, "Metric trend"}.body().size(
      60, 12);
}

std::string twoRates(double first, double second) {
  return "▲ " + formatRate(first) + "  ▼ " + formatRate(second);
}

Color fillColor(const DiskSnapshot& disk) {
  const double used =
      share(static_cast<double>(disk.volumeUsedBytes), static_cast<double>(disk.volumeTotalBytes));
  if (used > 0.9) return statusCriticalColor;
  return used > 0.8 ? statusWarningColor : Color(ColorRole::primary);
}

View command(std::string title, std::function<void()> action) {
  return hoverHighlight(
      button(text(std::move(title)).fillWidth().paddingHorizontal(edgePadding).paddingVertical(5),
             std::move(action)));
}

}  // namespace

TextContent audioSummary(const AudioSnapshot& audio) {
  if (!audio.defaultOutput) return verbatimText("—");
  const auto& active = audio.activeProcesses;
  if (!active.empty()) {
    return verbatimText(active.size() == 1 ? active[0].name : active[0].name + " · " + active[1].name);
  }
  const auto& device = *audio.defaultOutput;
  if (device.isMuted) return keyWith("%@  Muted", {device.name});
  if (device.volume < 0) return verbatimText(device.name);
  return verbatimText(device.name + "  " + volumeText(device.volume));
}

MenuBarPopover::MenuBarPopover(const ViewContext& context, Commands commands)
    : context_(context),
      commands_(std::move(commands)),
      showCPU_(context.preferences, settings::showCPU),
      showMemory_(context.preferences, settings::showMemory),
      showDisk_(context.preferences, settings::showDisk),
      showNetwork_(context.preferences, settings::showNetwork),
      showProcesses_(context.preferences, settings::showProcesses),
      showIP_(context.preferences, settings::showIP),
      showAudio_(context.preferences, settings::showAudio) {}

View MenuBarPopover::body() {
  std::vector<View> parts;
  parts.push_back(metrics());
  if (showProcesses_.get() && !context_.isSandboxed) {
    parts.push_back(divider());
    parts.push_back(processes());
  }
  parts.push_back(divider());
  parts.push_back(commandColumn());
  return vstack(0, leading, std::move(parts));
}

View MenuBarPopover::metrics() const {
  std::vector<View> rows;
  if (showCPU_.get()) rows.push_back(cpuRow());
  if (showMemory_.get()) rows.push_back(memoryRow());
  if (showDisk_.get()) rows.push_back(diskRow());
  if (showNetwork_.get()) rows.push_back(networkRow());
  if (showIP_.get()) {
    rows.push_back(metricRow("IP", verbatim(context_.env.network->current->ipAddress.value_or("—"))));
  }
  if (showAudio_.get()) {
    rows.push_back(metricRow("Audio", View(audioSummary(*context_.env.audio->current))));
  }
  if (rows.empty()) {
    rows.push_back(text("No metrics selected — enable some in Settings.")
                       .withFont(11)
                       .withForeground(ColorRole::secondary)
                       .fillWidth()
                       .paddingHorizontal(edgePadding)
                       .paddingVertical(8));
  }
  return vstack(0, HorizontalAlignment::center, std::move(rows)).paddingVertical(4);
}

View MenuBarPopover::cpuRow() const {
  const CPUProvider& cpu = *context_.env.cpu;
  return metricRow("CPU", verbatim(context_.formats.percent(cpu.current->usagePercent / 100, 0)),
                   trend(*cpu.history, [](const CPUSnapshot& each) { return each.usagePercent; }));
}

View MenuBarPopover::memoryRow() const {
  const MemoryProvider& memory = *context_.env.memory;
  const MemorySnapshot& now = *memory.current;
  auto used = verbatim(formatGibibytes(gibibytes(static_cast<double>(now.usedBytes)), 1))
                  .withForeground(pressureColor(now.pressure));
  return metricRow("Memory", std::move(used), trend(*memory.history, [](const MemorySnapshot& each) {
                     return share(static_cast<double>(each.usedBytes), static_cast<double>(each.totalBytes)) *
                            100;
                   }));
}

View MenuBarPopover::diskRow() const {
  const DiskSnapshot& disk = *context_.env.disk->current;
  return metricRow(
      "Disk",
      verbatim(twoRates(disk.readBytesPerSec, disk.writeBytesPerSec)).withForeground(fillColor(disk)));
}

View MenuBarPopover::networkRow() const {
  const NetworkSnapshot& network = *context_.env.network->current;
  return metricRow("Network", verbatim(twoRates(network.uploadBytesPerSec, network.downloadBytesPerSec)));
}

View MenuBarPopover::processes() const {
  std::vector<View> rows;
  rows.push_back(text("Top processes")
                     .withForeground(ColorRole::secondary)
                     .padding({.top = 8, .leading = edgePadding, .bottom = 0, .trailing = edgePadding}));
  const auto& busiest = context_.env.cpu->current->topProcesses;
  for (std::size_t i = 0; i < std::min(busiest.size(), listedProcesses); ++i) {
    rows.push_back(hstack(rowSpacing, centered,
                          views(verbatim(busiest[i].name).withLineLimit(1).fillWidth(),
                                verbatim(context_.formats.percent(busiest[i].cpuPercent / 100, 1))
                                    .withMonospacedDigits(14, FontWeight::medium)
                                    .withForeground(ColorRole::secondary)))
                       .paddingHorizontal(edgePadding)
                       .paddingVertical(2));
  }
  return vstack(2, leading, std::move(rows)).padding({.top = 0, .leading = 0, .bottom = 8, .trailing = 0});
}

View MenuBarPopover::commandColumn() const {
  const auto openMainWindow = commands_.openMainWindow;
  auto openSettings = [openMainWindow, &notifications = context_.notifications] {
    notifications.post(openSettingsTabNotification);
    openMainWindow();
  };
  return vstack(
             0, HorizontalAlignment::center,
             views(command("Open main window", openMainWindow), command("Settings…", std::move(openSettings)),
                   divider().withOpacity(0.5), command("Quit Kestrune", commands_.terminate)))
      .paddingVertical(4);
}

}  // namespace kestrune::ui
