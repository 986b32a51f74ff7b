#include "platform/linux/program/TerminationSignals.h"

#include <sys/signalfd.h>
#include <unistd.h>

namespace kestrune::platform {
namespace {

bool isIgnored(int signal) {
  struct sigaction action {};
  return sigaction(signal, nullptr, &action) == 0 && action.sa_handler == SIG_IGN;
}

}  // namespace

TerminationSignals::TerminationSignals() {
  sigset_t signals{};
  sigemptyset(&signals);
  for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
    if (!isIgnored(signal)) sigaddset(&signals, signal);
  }
  descriptor_ = UniqueFd(signalfd(-1, &signals, SFD_NONBLOCK | SFD_CLOEXEC));
  // Without the descriptor the signals keep their default action.
  pthread_sigmask(SIG_BLOCK, descriptor_ ? &signals : nullptr, &before_);
}

TerminationSignals::~TerminationSignals() {
  pthread_sigmask(SIG_SETMASK, &before_, nullptr);
}

bool TerminationSignals::consume() {
  bool hasArrived = false;
  signalfd_siginfo signal{};
  while (read(descriptor_.get(), &signal, sizeof signal) > 0) hasArrived = true;
  return hasArrived;
}

}  // namespace kestrune::platform
