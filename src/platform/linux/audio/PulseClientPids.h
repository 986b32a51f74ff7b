#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "platform/linux/audio/PulseFacts.h"

namespace kestrune::platform {

// Which process below proc/ of `root` a sound server's client is. A program says its own pid, which in a
// sandbox is that of the sandbox and belongs to some other process outside; so a claim is believed where a
// process of that pid runs the executable that the client named, and else the process is looked for which has
// that pid inside a sandbox. What was found is kept as long as the client is there. One thread at a time.
class PulseClientPids {
 public:
  explicit PulseClientPids(std::string root = "/");

  // 0: not known. Indexes are those of one connection to the server.
  std::int32_t pid(const PulseClient& client);
  // Forgets all clients but those.
  void keepOnly(const std::vector<PulseClient>& clients);
  void forgetAll() { known_.clear(); }

 private:
  struct Known {
    std::int32_t claimedPid = 0;
    std::string claimedBinary;
    std::int32_t pid = 0;
  };

  std::int32_t findOut(const PulseClient& client) const;
  bool runs(std::int32_t pid, const std::string& binary) const;
  std::int32_t findInSandbox(std::int32_t innerPid, const std::string& binary) const;

  std::string root_;
  std::unordered_map<std::uint32_t, Known> known_;  // by the client's index
};

// The pid that a process has in the innermost of several nested spaces of pids, as its /proc/PID/status
// tells. 0: it has one pid only, or the text is garbled.
std::int32_t innermostPid(std::string_view status);

}  // namespace kestrune::platform
