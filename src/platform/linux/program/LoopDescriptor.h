#pragma once

#include <optional>

#include "platform/linux/files/UniqueFd.h"
#include "runtime/MainLoop.h"

namespace kestrune::platform {

// One file descriptor that turns readable when the loop has to run, for whoever waits for descriptors.
class LoopDescriptor final : public LoopWaker {
 public:
  // Ends the process with one line on standard error where the kernel grants no descriptors.
  LoopDescriptor();

  int fd() const { return epoll_.get(); }

  void wake() override;
  void setDeadline(std::optional<ContinuousTime> deadline) override;
  void acknowledge() override;

 private:
  void watch(const UniqueFd& source);

  UniqueFd epoll_;
  UniqueFd timer_;
  UniqueFd event_;
  std::optional<ContinuousTime> armed_;  // what the timer is set to
};

}  // namespace kestrune::platform
