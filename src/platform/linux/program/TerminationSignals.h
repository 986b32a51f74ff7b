#pragma once

#include <csignal>

#include "platform/linux/files/UniqueFd.h"

namespace kestrune::platform {

// The requests to end (SIGTERM, SIGINT, SIGHUP) as a file descriptor. To be made before any thread starts: it
// blocks the signals for the thread that makes it and for those that follow from it, until it goes. One that
// the process was started to ignore stays ignored.
class TerminationSignals {
 public:
  TerminationSignals();
  ~TerminationSignals();
  TerminationSignals(const TerminationSignals&) = delete;
  TerminationSignals& operator=(const TerminationSignals&) = delete;

  // Readable when such a signal has come; below 0 where the kernel grants none.
  int fd() const { return descriptor_.get(); }
  // Takes in the signals that have come; true if there was one.
  bool consume();

 private:
  sigset_t before_{};
  UniqueFd descriptor_;
};

}  // namespace kestrune::platform
