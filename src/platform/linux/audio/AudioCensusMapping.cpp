#include "platform/linux/audio/AudioCensusMapping.h"

#include <algorithm>
#include <optional>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "platform/linux/files/Text.h"

namespace kestrune::platform {
namespace {

enum class Direction : std::uint32_t { output = 0, input = 1 };

// Sinks and sources are numbered separately.
std::uint32_t deviceId(std::uint32_t index, Direction direction) {
  return ((index << 1U) | static_cast<std::uint32_t>(direction)) + 1;
}

// The largest index that fits into an id; no server gets there.
constexpr std::uint32_t maxIndex = 0x7FFFFFFE;

bool isListed(const PulseDevice& device) {
  return !device.isMonitor && device.index <= maxIndex;
}

AudioScope scopeOf(const PulseDevice& device) {
  AudioScope scope;
  scope.hasStreams = true;
  if (device.channels > 0) {
    scope.mainVolume = static_cast<float>(std::min(device.volume, fullPulseVolume)) / fullPulseVolume;
    scope.bufferChannels = {device.channels};
  }
  scope.isMuted = device.isMuted;
  return scope;
}

AudioDevice deviceOf(const PulseDevice& device, Direction direction) {
  AudioDevice result;
  result.id = deviceId(device.index, direction);
  result.name = device.description.empty() ? device.name : device.description;
  result.transport = audioTransport(device);
  if (device.sampleRate > 0) result.sampleRate = device.sampleRate;
  (direction == Direction::output ? result.output : result.input) = scopeOf(device);
  return result;
}

std::uint32_t idOf(const std::vector<PulseDevice>& devices, const std::string& name, Direction direction) {
  const auto found = std::ranges::find_if(
      devices, [&](const PulseDevice& device) { return isListed(device) && device.name == name; });
  return found == devices.end() || name.empty() ? 0 : deviceId(found->index, direction);
}

struct Running {
  bool input = false;
  bool output = false;
};

// By client index.
std::unordered_map<std::uint32_t, Running> runningClients(const PulseFacts& facts) {
  std::unordered_map<std::uint32_t, Running> running;
  for (const PulseStream& stream : facts.playing) {
    if (!stream.isCorked) running[stream.client].output = true;
  }
  std::unordered_set<std::uint32_t> inputs;
  for (const PulseDevice& source : facts.sources) {
    if (isListed(source)) inputs.insert(source.index);
  }
  for (const PulseStream& stream : facts.recording) {
    if (!stream.isCorked && !stream.isLevelMeter && inputs.contains(stream.device)) {
      running[stream.client].input = true;
    }
  }
  return running;
}

bool isBluetooth(const PulseDevice& device) {
  return device.bus == "bluetooth" || device.api.starts_with("bluez") || device.name.starts_with("bluez_");
}

// `word` is in lower case.
bool mentions(std::string_view text, std::string_view word) {
  return !std::ranges::search(text, word, {}, lowerCase).empty();
}

// Drivers that can't distinguish the two report "HDMI / DisplayPort", which counts as HDMI.
std::optional<AudioTransport> displayTransport(const PulseDevice& device) {
  const auto isMentioned = [&](std::string_view word) {
    return mentions(device.portName, word) || mentions(device.portDescription, word) ||
           mentions(device.name, word);
  };
  if (isMentioned("hdmi")) return AudioTransport::hdmi;
  if (isMentioned("displayport")) return AudioTransport::displayPort;
  return device.isPortHdmi ? std::optional(AudioTransport::hdmi) : std::nullopt;
}

// Names of hardware devices begin with their bus: "alsa_output.usb-Maker_Model-00.analog-stereo".
bool isOnBus(const PulseDevice& device, std::string_view bus) {
  if (!device.bus.empty()) return device.bus == bus;
  const std::string_view name = device.name;
  const std::string_view place = name.substr(name.find('.') + 1);
  return name.starts_with("alsa_") && place.starts_with(bus) && place.substr(bus.size()).starts_with('-');
}

}  // namespace

AudioCensus audioCensus(const PulseFacts& facts,
                        const std::function<std::int32_t(const PulseClient&)>& pidOf) {
  AudioCensus census;
  census.defaultOutput = idOf(facts.sinks, facts.defaultSink, Direction::output);
  census.defaultInput = idOf(facts.sources, facts.defaultSource, Direction::input);
  for (const auto& [devices, direction] :
       {std::pair(&facts.sinks, Direction::output), std::pair(&facts.sources, Direction::input)}) {
    for (const PulseDevice& device : *devices) {
      if (isListed(device)) census.devices.push_back(deviceOf(device, direction));
    }
  }
  auto running = runningClients(facts);
  for (const PulseClient& client : facts.clients) {
    if (client.index == noPulseIndex) continue;
    const Running uses = running[client.index];
    census.clients.push_back({.id = client.index + 1,
                              .isRunningInput = uses.input,
                              .isRunningOutput = uses.output,
                              .pid = pidOf(client)});
  }
  return census;
}

AudioTransport audioTransport(const PulseDevice& device) {
  if (isBluetooth(device)) {
    const bool isLowEnergy = device.bluetoothProfile.starts_with("bap");
    return isLowEnergy ? AudioTransport::bluetoothLE : AudioTransport::bluetooth;
  }
  if (device.driver.starts_with("module-raop") || device.name.starts_with("raop_")) {
    return AudioTransport::airPlay;
  }
  if (!device.isHardware && device.bus.empty() && device.api.empty()) return AudioTransport::virtual_;
  if (const auto display = displayTransport(device)) return *display;
  if (isOnBus(device, "usb")) return AudioTransport::usb;
  if (isOnBus(device, "pci") || device.formFactor == "internal") return AudioTransport::builtIn;
  return AudioTransport::unknown;
}

}  // namespace kestrune::platform
