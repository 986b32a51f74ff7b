#include "platform/linux/audio/PulseCopies.h"

#include <string_view>

#include <pulse/def.h>
#include <pulse/proplist.h>
#include <pulse/volume.h>

#include "platform/linux/files/FieldScanner.h"

namespace kestrune::platform {
namespace {

static_assert(noPulseIndex == PA_INVALID_INDEX && fullPulseVolume == PA_VOLUME_NORM);

std::string textOf(const char* text) {
  return text == nullptr ? std::string() : std::string(text);
}

// Empty: there is no such property, or it isn't text.
std::string_view property(const pa_proplist* properties, const char* key) {
  const char* const value = properties == nullptr ? nullptr : pa_proplist_gets(properties, key);
  return value == nullptr ? std::string_view() : std::string_view(value);
}

std::int32_t pidProperty(const pa_proplist* properties, const char* key) {
  return FieldScanner(property(properties, key)).number<std::int32_t>().value_or(0);
}

bool isTrue(std::string_view value) {
  return value == "true" || value == "1";
}

template <typename Info>
PulseDevice deviceOf(const Info& info) {
  PulseDevice device;
  device.index = info.index;
  device.name = textOf(info.name);
  device.description = textOf(info.description);
  device.isMuted = info.mute != 0;
  device.volume = info.volume.channels > 0 ? pa_cvolume_max(&info.volume) : 0;
  device.sampleRate = info.sample_spec.rate;
  device.channels = info.sample_spec.channels;
  device.driver = textOf(info.driver);
  device.bus = property(info.proplist, PA_PROP_DEVICE_BUS);
  device.api = property(info.proplist, PA_PROP_DEVICE_API);
  device.formFactor = property(info.proplist, PA_PROP_DEVICE_FORM_FACTOR);
  device.bluetoothProfile = property(info.proplist, "api.bluez5.profile");
  if (const auto* port = info.active_port) {
    device.portName = textOf(port->name);
    device.portDescription = textOf(port->description);
    device.isPortHdmi = port->type == PA_DEVICE_PORT_TYPE_HDMI;
  }
  return device;
}

// Volume controls keep such streams open while they are shown. PulseAudio uses a resampler named "peaks" for
// them; PipeWire marks them with a property.
bool isLevelMeter(const pa_source_output_info& info) {
  return textOf(info.resample_method) == "peaks" || isTrue(property(info.proplist, "resample.peaks")) ||
         isTrue(property(info.proplist, "stream.monitor"));
}

}  // namespace

PulseDevice pulseCopy(const pa_sink_info& info) {
  PulseDevice device = deviceOf(info);
  device.isHardware = (info.flags & PA_SINK_HARDWARE) != 0;
  return device;
}

PulseDevice pulseCopy(const pa_source_info& info) {
  PulseDevice device = deviceOf(info);
  device.isHardware = (info.flags & PA_SOURCE_HARDWARE) != 0;
  device.isMonitor = info.monitor_of_sink != PA_INVALID_INDEX;
  return device;
}

PulseClient pulseCopy(const pa_client_info& info) {
  PulseClient client;
  client.index = info.index;
  client.claimedPid = pidProperty(info.proplist, PA_PROP_APPLICATION_PROCESS_ID);
  client.claimedBinary = property(info.proplist, PA_PROP_APPLICATION_PROCESS_BINARY);
  client.peerPid = pidProperty(info.proplist, "pipewire.sec.pid");
  client.isPeerProxy = property(info.proplist, "client.api") == "pipewire-pulse";
  client.isOnOtherMachine = property(info.proplist, "native-protocol.peer").starts_with("TCP/IP") ||
                            property(info.proplist, "pulse.server.type") == "tcp";
  return client;
}

PulseStream pulseCopy(const pa_sink_input_info& info) {
  return {.client = info.client, .device = info.sink, .isCorked = info.corked != 0, .isLevelMeter = false};
}

PulseStream pulseCopy(const pa_source_output_info& info) {
  return {.client = info.client,
          .device = info.source,
          .isCorked = info.corked != 0,
          .isLevelMeter = isLevelMeter(info)};
}

void copyPulseDefaults(const pa_server_info& info, PulseFacts& facts) {
  facts.defaultSink = textOf(info.default_sink_name);
  facts.defaultSource = textOf(info.default_source_name);
}

}  // namespace kestrune::platform
