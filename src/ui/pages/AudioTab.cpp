#include "ui/pages/AudioTab.h"

#include <optional>
#include <string>
#include <utility>

#include <fmt/format.h>

#include "ui/components/AudioParts.h"
#include "ui/components/Card.h"
#include "ui/components/Dashboard.h"
#include "ui/components/Gauges.h"
#include "ui/components/StatusColors.h"
#include "ui/view/View.h"

namespace kestrune::ui {
namespace {

using Device = AudioSnapshot::Device;
using AudioProcess = AudioSnapshot::AudioProcess;

constexpr auto leading = HorizontalAlignment::leading;
constexpr auto centered = VerticalAlignment::center;
constexpr double iconSide = 24;
constexpr double cellSpacing = 32;

TextContent sampleRateText(double hertz) {
  if (!(hertz > 0)) return verbatimText("—");
  if (hertz >= 1000) return verbatimText(fmt::format("{:.1f} kHz", hertz / 1000.0));
  return verbatimText(fmt::format("{:.0f} Hz", hertz));
}

TextContent channelsText(std::int64_t count) {
  if (count == 1) return key("Mono");
  if (count == 2) return key("Stereo");
  return verbatimText(count > 0 ? std::to_string(count) + " ch" : "—");
}

View cell(std::string name, View value) {
  return captioned(4, std::move(name), std::move(value).withMonospacedDigits(14));
}

View volumeCell(const Device& device) {
  const Color color = device.isMuted ? statusCriticalColor : Color(ColorRole::accent);
  auto value = device.isMuted ? text("Muted") : verbatim(volumeText(device.volume));
  return cell("Volume", hstack(innerSpacing, centered,
                               views(View(ThinBar{static_cast<double>(device.volume), color}).width(80),
                                     std::move(value))));
}

View defaultDeviceCard(std::string heading, const Device& device, bool isOutput) {
  const bool isSilent = isOutput && device.isMuted;
  const std::string icon = isSilent ? "speaker.slash.fill" : transportSymbol(device.transport);
  std::vector<View> cells;
  if (device.volume >= 0) cells.push_back(volumeCell(device));
  cells.push_back(cell("Sample Rate", View(sampleRateText(device.sampleRate))));
  cells.push_back(cell("Channels", View(channelsText(device.channelCount))));
  cells.push_back(cell("Connection", text(transportLabel(device.transport))));
  auto name = hstack(12, centered,
                     views(symbol(icon)
                               .withFont(22)
                               .withForeground(isSilent ? statusCriticalColor : Color(ColorRole::accent))
                               .width(30),
                           verbatim(device.name).withFont(15, FontWeight::medium).withLineLimit(1)));
  return Card{vstack(12, leading,
                     views(sectionHeader(text(std::move(heading))), std::move(name),
                           hstack(cellSpacing, VerticalAlignment::top, std::move(cells)).fillWidth()))};
}

View badge(std::string symbolName, std::string what) {
  return caption(hstack(4, centered, views(symbol(std::move(symbolName)), text(std::move(what)))));
}

View processRow(const AudioProcess& process) {
  std::vector<View> parts =
      views(icon(process.iconName.value_or(""), "app.dashed").withFont(20).size(iconSide, iconSide),
            verbatim(process.name).withFont(14).withLineLimit(1).fillWidth());
  if (process.usesInput) parts.push_back(badge("mic.fill", "Mic"));
  if (process.usesOutput) parts.push_back(badge("speaker.wave.2.fill", "Playback"));
  return hstack(10, centered, std::move(parts)).paddingVertical(5).withKey(process.id);
}

View deviceRow(const Device& device, bool isDefault) {
  std::vector<View> parts = views(symbol(transportSymbol(device.transport)).withFont(18).width(iconSide),
                                  verbatim(device.name).withFont(14).withLineLimit(1).fillWidth());
  const auto small = [](View words) {
    return std::move(words).withMonospacedDigits(11).withForeground(ColorRole::secondary);
  };
  if (isDefault) parts.push_back(caption(text("Default"), ColorRole::accent));
  parts.push_back(small(View(sampleRateText(device.sampleRate))).width(64, HorizontalAlignment::trailing));
  parts.push_back(small(View(channelsText(device.channelCount))).width(48, HorizontalAlignment::trailing));
  return hstack(10, centered, std::move(parts)).paddingVertical(5).withKey(std::to_string(device.id));
}

// Empty without devices.
View deviceGroup(std::string heading, const std::vector<Device>& devices,
                 const std::optional<Device>& preferred) {
  if (devices.empty()) return {};
  std::vector<View> lines =
      views(text(std::move(heading)).withFont(11, FontWeight::semibold).withForeground(ColorRole::tertiary));
  for (const Device& device : devices) {
    lines.push_back(deviceRow(device, preferred && preferred->id == device.id));
  }
  return vstack(2, leading, std::move(lines));
}

}  // namespace

View AudioTab::body() {
  std::vector<View> sections;
  if (audio().defaultOutput) sections.push_back(defaultDeviceCard("Output", *audio().defaultOutput, true));
  if (audio().defaultInput) sections.push_back(defaultDeviceCard("Input", *audio().defaultInput, false));
  sections.push_back(activeCard());
  sections.push_back(devicesCard());
  return dashboard(std::move(sections));
}

View AudioTab::activeCard() const {
  auto title = sectionHeader(text("Using Audio Now"));
  const auto& active = audio().activeProcesses;
  if (active.empty()) {
    auto hint =
        hstack(10, centered,
               views(symbol("speaker.slash").withFont(20),
                     text("No apps are currently playing audio or using the microphone.").withFont(11)))
            .withForeground(ColorRole::secondary)
            .paddingVertical(6)
            .fillWidth();
    return Card{section(views(std::move(title), std::move(hint)))};
  }
  std::vector<View> rows;
  rows.reserve(active.size());
  for (const AudioProcess& process : active) rows.push_back(processRow(process));
  return Card{section(views(std::move(title), dividedRows(std::move(rows))))};
}

View AudioTab::devicesCard() const {
  const AudioSnapshot& now = audio();
  std::vector<View> groups;
  groups.push_back(deviceGroup("Output", now.allOutputDevices, now.defaultOutput));
  if (!now.allOutputDevices.empty() && !now.allInputDevices.empty()) groups.push_back(rowDivider());
  groups.push_back(deviceGroup("Input", now.allInputDevices, now.defaultInput));
  return Card{section(
      views(sectionHeader(text("Available Devices")), vstack(6, leading, std::move(groups)).fillWidth()))};
}

}  // namespace kestrune::ui
