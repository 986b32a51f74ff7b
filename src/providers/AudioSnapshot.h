#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/Applications.h"
#include "platform/AudioService.h"

namespace kestrune {

// The sound devices and the processes that use them at one moment.
struct AudioSnapshot {
  struct Device {
    using TransportKind = platform::AudioTransport;

    std::uint32_t id = 0;
    std::string name;
    TransportKind transport = TransportKind::unknown;
    float volume = -1.0F;  // 0 to 1; -1: no readable volume
    bool isMuted = false;
    double sampleRate = 0;  // nominal, hertz; 0: unknown
    std::int64_t channelCount = 0;
  };

  struct AudioProcess {
    std::string id;    // the bundle identifier, or "proc-" and the client's id
    std::string name;  // display name
    std::optional<std::string> bundleID;
    std::optional<std::int32_t> pid;  // at least 1
    bool usesInput = false;
    bool usesOutput = false;
    std::optional<std::string> iconName;  // the application's icon on the desktop
  };

  std::optional<Device> defaultOutput;
  std::optional<Device> defaultInput;
  std::vector<Device> allOutputDevices;       // with output streams, in the service's order
  std::vector<Device> allInputDevices;        // with input streams, in the service's order
  std::vector<AudioProcess> activeProcesses;  // playing or recording now, sorted by name
};

// Combines a census with the applications that own its process ids. Off the main thread.
AudioSnapshot audioSnapshot(const platform::AudioCensus& census, platform::Applications& applications);

}  // namespace kestrune
