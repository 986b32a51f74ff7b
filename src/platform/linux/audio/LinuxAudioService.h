#pragma once

#include <chrono>
#include <cstdint>
#include <string>

#include "platform/AudioService.h"
#include "platform/linux/audio/PulseClientPids.h"
#include "platform/linux/audio/PulseConnection.h"

namespace kestrune::platform {

// The sound server of the user's session, PulseAudio or PipeWire. The connection is kept from census to
// census and reopened if it broke. A census takes at most `timeout`, connecting included.
class LinuxAudioService final : public AudioService {
 public:
  // `root`: the folder that contains proc/.
  explicit LinuxAudioService(std::string root = "/",
                             std::chrono::milliseconds timeout = std::chrono::seconds(2));

  AudioCensus census() override;

 private:
  std::chrono::milliseconds timeout_;
  PulseConnection connection_;
  PulseClientPids pids_;
  std::uint64_t lastConnection_ = 0;
};

}  // namespace kestrune::platform
