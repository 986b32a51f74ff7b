#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "platform/linux/audio/PulseFacts.h"

struct pa_context;
struct pa_mainloop;
struct pa_operation;

namespace kestrune::platform {

// A read-only connection to the sound server of the user's session, PulseAudio or PipeWire. It opens no
// stream, changes nothing and doesn't spawn a server (though a socket-activated one starts when we connect).
// One thread at a time.
class PulseConnection {
 public:
  using Deadline = std::chrono::steady_clock::time_point;

  PulseConnection() = default;
  ~PulseConnection();
  PulseConnection(const PulseConnection&) = delete;
  PulseConnection& operator=(const PulseConnection&) = delete;

  // Waits for the answer, and for a connection if there is none. Lists that the server refuses are empty.
  // Absent: there is no server, the connection broke, or the deadline passed; the connection is then closed.
  std::optional<PulseFacts> read(Deadline deadline);

  // Different for each connection; indexes are only valid within one.
  std::uint64_t connectionNumber() const { return connectionNumber_; }

 private:
  struct FreeLoop {
    void operator()(pa_mainloop* loop) const;
  };
  struct CloseContext {
    void operator()(pa_context* context) const;
  };
  struct CancelOperation {
    void operator()(pa_operation* operation) const;
  };
  using Operations = std::vector<std::unique_ptr<pa_operation, CancelOperation>>;

  bool isReady() const;
  bool connect(Deadline deadline);
  void disconnect();
  void processPending(Deadline deadline);
  // False: the connection broke or the deadline passed.
  template <typename Condition>
  bool iterateUntil(Condition isDone, Deadline deadline);
  int iterate(int microseconds);
  Operations ask(PulseFacts& facts);

  std::uint64_t connectionNumber_ = 0;
  std::unique_ptr<pa_mainloop, FreeLoop> loop_;
  std::unique_ptr<pa_context, CloseContext> context_;
};

}  // namespace kestrune::platform
