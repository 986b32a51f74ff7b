#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "ui/components/AudioParts.h"
#include "ui/components/Card.h"
#include "ui/components/StatusColors.h"
#include "ui/pages/overview/OverviewParts.h"
#include "ui/view/View.h"

namespace kestrune::ui {
namespace {

using Device = AudioSnapshot::Device;

constexpr auto leading = HorizontalAlignment::leading;
constexpr auto centered = VerticalAlignment::center;

std::string outputSymbol(const std::optional<Device>& device) {
  return !device || device->isMuted ? "speaker.slash.fill" : transportSymbol(device->transport);
}

View audioBlock(View icon, std::string label, View value, View level = {}) {
  auto words = vstack(
      2, leading,
      views(text(std::move(label)).withFont(9, FontWeight::semibold).withForeground(ColorRole::tertiary),
            std::move(value).withMonospacedDigits(14, FontWeight::medium).withLineLimit(1)));
  return hstack(10, centered,
                views(std::move(icon).withFont(14, FontWeight::medium).width(20), std::move(words),
                      std::move(level)))
      .fillWidth();
}

View nameOrNone(const std::optional<Device>& device) {
  return device ? verbatim(device->name) : text("None");
}

View outputLevel(const std::optional<Device>& device) {
  if (!device || device->volume < 0) return {};
  auto level = device->isMuted ? text("Muted").withForeground(statusCriticalColor)
                               : verbatim(volumeText(device->volume)).withForeground(ColorRole::secondary);
  return std::move(level)
      .withMonospacedDigits(11, FontWeight::medium)
      .padding({.top = 0, .leading = 4, .bottom = 0, .trailing = 0});
}

View outputBlock(const AudioSnapshot& audio) {
  const auto& device = audio.defaultOutput;
  const Color color = device && device->isMuted ? statusCriticalColor : Color(ColorRole::accent);
  return audioBlock(symbol(outputSymbol(device)).withForeground(color), "OUTPUT", nameOrNone(device),
                    outputLevel(device));
}

View inputBlock(const AudioSnapshot& audio) {
  const auto& device = audio.defaultInput;
  return audioBlock(symbol("mic.fill").withForeground(device ? ColorRole::orange : ColorRole::secondary),
                    "INPUT", nameOrNone(device));
}

View activeNames(const std::vector<AudioSnapshot::AudioProcess>& active) {
  switch (active.size()) {
    case 0:
      return text("No audio at this moment.").withForeground(ColorRole::tertiary);
    case 1:
      return verbatim(active[0].name);
    case 2:
      return verbatim(active[0].name + " · " + active[1].name);
    default:
      return text("%@ apps using audio", {std::to_string(active.size())});
  }
}

View activeBlock(const AudioSnapshot& audio) {
  const bool isActive = !audio.activeProcesses.empty();
  auto icon = symbol(isActive ? "waveform.badge.mic" : "waveform")
                  .withForeground(isActive ? ColorRole::green : ColorRole::secondary);
  if (isActive) icon = std::move(icon).pulse({.from = 0.45, .to = 1, .seconds = 0.85});
  return audioBlock(std::move(icon), "ACTIVE", activeNames(audio.activeProcesses));
}

}  // namespace

View audioCard(const AudioSnapshot& audio) {
  const auto line = [] { return hstack(0, centered, views(divider())).height(34).paddingHorizontal(16); };
  return Card{
      hstack(0, centered, views(outputBlock(audio), line(), inputBlock(audio), line(), activeBlock(audio)))
          .paddingVertical(2)};
}

}  // namespace kestrune::ui
