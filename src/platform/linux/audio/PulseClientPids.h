#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "platform/linux/audio/PulseFacts.h"

namespace kestrune::platform {

// Maps a sound server's clients to processes below proc/ of `root`. A program reports its own pid, which in a
// sandbox is the pid inside and belongs to another process outside. So a claimed pid is believed only if that
// process runs the executable that the client named; otherwise the process with that pid inside a sandbox is
// looked for. Results are kept as long as the client exists. One thread at a time.
class PulseClientPids {
 public:
  explicit PulseClientPids(std::string root = "/");

  // 0: unknown. Client indexes are only valid for one connection to the server.
  std::int32_t pid(const PulseClient& client);
  // Forgets all clients but these.
  void retain(const std::vector<PulseClient>& clients);
  void clear() { known_.clear(); }

 private:
  struct Known {
    std::int32_t claimedPid = 0;
    std::string claimedBinary;
    std::int32_t pid = 0;
  };

  std::int32_t resolve(const PulseClient& client) const;
  bool runs(std::int32_t pid, const std::string& binary) const;
  std::int32_t findInSandbox(std::int32_t innerPid, const std::string& binary) const;

  std::string root_;
  std::unordered_map<std::uint32_t, Known> known_;  // by client index
};

// The pid of a process in its innermost pid namespace, from its /proc/PID/status. 0: the process is in no
// nested namespace, or the text is malformed.
std::int32_t innermostPid(std::string_view status);

}  // namespace kestrune::platform
