#pragma once

#include <chrono>
#include <cstdint>
#include <string>

#include "platform/AudioService.h"
#include "platform/linux/audio/PulseClientPids.h"
#include "platform/linux/audio/PulseConnection.h"

namespace kestrune::platform {

// The sound server of the user's session, PulseAudio or PipeWire. The connection stays from census to census;
// a census makes it anew where it broke. A census takes at most `patience`, connecting included.
class LinuxAudioService final : public AudioService {
 public:
  // `root`: where proc/ is.
  explicit LinuxAudioService(std::string root = "/",
                             std::chrono::milliseconds patience = std::chrono::seconds(2));

  AudioCensus census() override;

 private:
  std::chrono::milliseconds patience_;
  PulseConnection connection_;
  PulseClientPids pids_;
  std::uint64_t lastConnection_ = 0;
};

}  // namespace kestrune::platform
