#pragma once

#include <csignal>

#include "platform/linux/files/UniqueFd.h"

namespace kestrune::platform {

// The termination signals (SIGTERM, SIGINT, SIGHUP) as a file descriptor. To be constructed before any thread
// starts: it blocks the signals for the calling thread and its later children until it is destroyed. A signal
// that was ignored when the process started stays ignored.
class TerminationSignals {
 public:
  TerminationSignals();
  ~TerminationSignals();
  TerminationSignals(const TerminationSignals&) = delete;
  TerminationSignals& operator=(const TerminationSignals&) = delete;

  // Readable when a signal has arrived; below 0 if the kernel grants no descriptor.
  int fd() const { return descriptor_.get(); }
  // Takes all pending signals; true if there were any.
  bool consume();

 private:
  sigset_t before_{};
  UniqueFd descriptor_;
};

}  // namespace kestrune::platform
