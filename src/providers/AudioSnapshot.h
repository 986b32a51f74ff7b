#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/Applications.h"
#include "platform/AudioService.h"

namespace kestrune {

// What plays and records at one moment.
struct AudioSnapshot {
  struct Device {
    using TransportKind = platform::AudioTransport;

    std::uint32_t id = 0;
    std::string name;
    TransportKind transport = TransportKind::unknown;
    float volume = -1.0F;  // 0 to 1; -1: the device has no volume that can be read
    bool isMuted = false;
    double sampleRate = 0;  // nominal, hertz; 0: unknown
    std::int64_t channelCount = 0;
  };

  struct AudioProcess {
    std::string id;    // the bundle identifier, else "proc-" and the number of the service's own object
    std::string name;  // as the user knows it
    std::optional<std::string> bundleID;
    std::optional<std::int32_t> pid;  // at least 1
    bool usesInput = false;
    bool usesOutput = false;
    std::optional<std::string> iconName;  // of the application, as the desktop knows it
  };

  std::optional<Device> defaultOutput;
  std::optional<Device> defaultInput;
  std::vector<Device> allOutputDevices;       // with output streams, in the order of the service
  std::vector<Device> allInputDevices;        // with input streams, in the order of the service
  std::vector<AudioProcess> activeProcesses;  // those that play or record now, by name
};

// What a census tells, with the applications that its process ids belong to. Off the main thread.
AudioSnapshot audioSnapshot(const platform::AudioCensus& census, platform::Applications& applications);

}  // namespace kestrune
