#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace kestrune::platform {

// What a sound server says, as far as it is of use, copied so that nothing of the server's library is needed
// to read it. Texts are bytes; an empty one wasn't said. Indexes are unique among things of one kind.

constexpr std::uint32_t noPulseIndex = 0xFFFFFFFF;
constexpr std::uint32_t fullPulseVolume = 0x10000;  // 100 %; more is amplified

// A sink, which plays, or a source, which records.
struct PulseDevice {
  std::uint32_t index = noPulseIndex;
  std::string name;         // the server's own
  std::string description;  // for people
  bool isMonitor = false;   // a source that records what a sink plays
  bool isHardware = false;
  bool isMuted = false;
  std::uint32_t volume = 0;  // of the loudest channel
  std::uint32_t sampleRate = 0;
  std::uint32_t channels = 0;
  std::string driver;            // of the server, "module-raop-sink.c"
  std::string bus;               // "pci", "usb", "bluetooth"
  std::string api;               // "alsa", "bluez5"
  std::string formFactor;        // "internal", "headset"
  std::string bluetoothProfile;  // "a2dp-sink"
  // The socket in use.
  bool isPortHdmi = false;
  std::string portName;
  std::string portDescription;
};

// A program that is connected to the server.
struct PulseClient {
  std::uint32_t index = noPulseIndex;
  std::int32_t claimedPid = 0;    // as the program itself sees it; below 1: not said
  std::string claimedBinary;      // the base name of its executable
  std::int32_t peerPid = 0;       // of the process at the other end of the server's socket
  bool hasForeignPeer = false;    // that process only passes on what other programs play
  bool isOnOtherMachine = false;  // or may be
};

// A stream that a sink plays or a source records into.
struct PulseStream {
  std::uint32_t client = noPulseIndex;  // none: it is the server's own
  std::uint32_t device = noPulseIndex;
  bool isCorked = false;  // stopped by its program
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
