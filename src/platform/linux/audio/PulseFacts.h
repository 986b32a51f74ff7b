#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace kestrune::platform {

// The part of a sound server's state that we use, copied so that reading it doesn't need libpulse. Strings
// are bytes; empty means not reported. Indexes are unique among items of one kind.

constexpr std::uint32_t noPulseIndex = 0xFFFFFFFF;
constexpr std::uint32_t fullPulseVolume = 0x10000;  // 100 %; more is amplified

// A sink (plays) or a source (records).
struct PulseDevice {
  std::uint32_t index = noPulseIndex;
  std::string name;         // internal
  std::string description;  // shown to users
  bool isMonitor = false;   // a source that records what a sink plays
  bool isHardware = false;
  bool isMuted = false;
  std::uint32_t volume = 0;  // of the loudest channel
  std::uint32_t sampleRate = 0;
  std::uint32_t channels = 0;
  std::string driver;            // the server's, "module-raop-sink.c"
  std::string bus;               // "pci", "usb", "bluetooth"
  std::string api;               // "alsa", "bluez5"
  std::string formFactor;        // "internal", "headset"
  std::string bluetoothProfile;  // "a2dp-sink"
  // The active port.
  bool isPortHdmi = false;
  std::string portName;
  std::string portDescription;
};

// A program connected to the server.
struct PulseClient {
  std::uint32_t index = noPulseIndex;
  std::int32_t claimedPid = 0;    // as reported by the program itself; below 1: not reported
  std::string claimedBinary;      // base name of its executable
  std::int32_t peerPid = 0;       // of the process at the other end of the server's socket
  bool isPeerProxy = false;       // that process is a server in between, not the program itself
  bool isOnOtherMachine = false;  // or may be
};

// A stream played by a sink or recorded from a source.
struct PulseStream {
  std::uint32_t client = noPulseIndex;  // noPulseIndex: the server itself
  std::uint32_t device = noPulseIndex;
  bool isCorked = false;  // paused by its program
  bool isLevelMeter = false;
};

struct PulseFacts {
  std::string defaultSink;  // name
  std::string defaultSource;
  std::vector<PulseDevice> sinks;
  std::vector<PulseDevice> sources;
  std::vector<PulseClient> clients;
  std::vector<PulseStream> playing;
  std::vector<PulseStream> recording;
};

}  // namespace kestrune::platform
