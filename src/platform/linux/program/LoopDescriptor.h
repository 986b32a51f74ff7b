#pragma once

#include <optional>

#include "platform/linux/files/UniqueFd.h"
#include "runtime/MainLoop.h"

namespace kestrune::platform {

// A file descriptor that becomes readable when the loop has to run, for an event loop that polls descriptors.
class LoopDescriptor final : public LoopWaker {
 public:
  // Aborts with a message on standard error if the kernel grants no descriptors.
  LoopDescriptor();

  int fd() const { return epoll_.get(); }

  void wake() override;
  void setDeadline(std::optional<ContinuousTime> deadline) override;
  Duration leeway() const override { return std::chrono::milliseconds(20); }
  void acknowledge() override;

 private:
  void watch(const UniqueFd& source);

  UniqueFd epoll_;
  UniqueFd timer_;
  UniqueFd event_;
  std::optional<ContinuousTime> armed_;  // what the timer is set to
};

}  // namespace kestrune::platform
