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

// The connection to the sound server of the user's session, PulseAudio or PipeWire. It only asks: it opens no
// stream, sets nothing and starts no server by itself (one that waits for a connection comes up with it). One
// thread at a time.
class PulseConnection {
 public:
  using Deadline = std::chrono::steady_clock::time_point;

  PulseConnection() = default;
  ~PulseConnection();
  PulseConnection(const PulseConnection&) = delete;
  PulseConnection& operator=(const PulseConnection&) = delete;

  // Waits for the answer, and for the connection where there is none or it broke. What the server refuses to
  // tell is missing from the answer. Absent: there is no server, it went, or the deadline passed; the
  // connection is given up then, so that nothing is left to wait for.
  std::optional<PulseFacts> read(Deadline deadline);

  // Differs from connection to connection; indexes mean nothing beyond their own.
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
  void noticeLoss(Deadline deadline);
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
