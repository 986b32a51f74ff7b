#include "platform/linux/program/LoopDescriptor.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <ctime>

#include <sys/epoll.h>
#include <sys/eventfd.h>
#include <sys/timerfd.h>
#include <unistd.h>

namespace kestrune::platform {

LoopDescriptor::LoopDescriptor()
    : epoll_(epoll_create1(EPOLL_CLOEXEC)),
      timer_(timerfd_create(CLOCK_BOOTTIME, TFD_NONBLOCK | TFD_CLOEXEC)),
      event_(eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC)) {
  watch(timer_);
  watch(event_);
}

void LoopDescriptor::watch(const UniqueFd& source) {
  epoll_event event{};
  event.events = EPOLLIN;
  if (source && epoll_ctl(epoll_.get(), EPOLL_CTL_ADD, source.get(), &event) == 0) return;
  std::perror("kestrune: no descriptors for the main loop");
  std::abort();
}

void LoopDescriptor::wake() {
  // Fails only if the counter is full, and then the descriptor is readable anyway.
  static_cast<void>(eventfd_write(event_.get(), 1));
}

void LoopDescriptor::setDeadline(std::optional<ContinuousTime> deadline) {
  if (deadline == armed_) return;
  armed_ = deadline;
  itimerspec setting{};
  if (deadline) {
    // Zero would disarm the timer; a time in the past fires at once.
    const std::chrono::nanoseconds time = std::max(*deadline, ContinuousTime(1));
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(time);
    setting.it_value.tv_sec = seconds.count();
    setting.it_value.tv_nsec = (time - seconds).count();
  }
  timerfd_settime(timer_.get(), TFD_TIMER_ABSTIME, &setting, nullptr);
}

void LoopDescriptor::acknowledge() {
  eventfd_t wakes = 0;
  static_cast<void>(eventfd_read(event_.get(), &wakes));
  std::uint64_t expirations = 0;
  if (read(timer_.get(), &expirations, sizeof expirations) > 0) armed_.reset();
}

}  // namespace kestrune::platform
