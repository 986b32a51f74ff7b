#include "platform/linux/audio/LinuxAudioService.h"

#include <utility>

#include "platform/linux/audio/AudioCensusMapping.h"

namespace kestrune::platform {

LinuxAudioService::LinuxAudioService(std::string root, std::chrono::milliseconds timeout)
    : timeout_(timeout), pids_(std::move(root)) {}

AudioCensus LinuxAudioService::census() {
  const auto facts = connection_.read(std::chrono::steady_clock::now() + timeout_);
  if (std::exchange(lastConnection_, connection_.connectionNumber()) != connection_.connectionNumber()) {
    pids_.clear();
  }
  if (!facts) return {};
  pids_.retain(facts->clients);
  return audioCensus(*facts, [this](const PulseClient& client) { return pids_.pid(client); });
}

}  // namespace kestrune::platform
