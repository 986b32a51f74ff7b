#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace kestrune::platform {

// How a device is attached.
enum class AudioTransport {
  builtIn,
  usb,
  bluetooth,
  bluetoothLE,
  airPlay,
  hdmi,
  displayPort,
  thunderbolt,
  virtual_,
  unknown
};

// One direction of a device. Absent: unreadable, or the device doesn't have it.
struct AudioScope {
  bool hasStreams = false;          // the device can play (output) or record (input)
  std::optional<float> mainVolume;  // all channels together, 0 to 1
  std::optional<float> volume;      // the device's single control, 0 to 1
  std::optional<float> firstChannelVolume;
  std::optional<bool> isMuted;
  std::vector<std::uint32_t> bufferChannels;  // channels of each stream's buffer; empty: unknown
};

struct AudioDevice {
  std::uint32_t id = 0;             // never 0
  std::optional<std::string> name;  // bytes, not necessarily valid UTF-8
  std::optional<AudioTransport> transport;
  std::optional<double> sampleRate;  // nominal, hertz
  AudioScope output;
  AudioScope input;
};

// A program connected to the service, whether or not it is playing.
struct AudioClient {
  std::uint32_t id = 0;
  bool isRunningInput = false;
  bool isRunningOutput = false;
  std::int32_t pid = 0;  // below 1: unknown
};

// The service's whole state at one moment, in its own order.
struct AudioCensus {
  std::uint32_t defaultOutput = 0;  // a device's id; 0: none
  std::uint32_t defaultInput = 0;
  std::vector<AudioDevice> devices;
  std::vector<AudioClient> clients;
};

// The sound service, read-only: no stream is opened and nothing is changed.
class AudioService {
 public:
  virtual ~AudioService() = default;
  // May wait for the service, up to a timeout. Empty if there is no service or it doesn't answer in time. Any
  // thread but the main one, one at a time.
  virtual AudioCensus census() = 0;
};

}  // namespace kestrune::platform
