#pragma once

#include <mutex>
#include <optional>
#include <utility>
#include <vector>

#include "runtime/Task.h"

namespace kestrune {

// Hands values from other threads to one task. Shared by both sides. It may outlive the loop; values added
// after that are never taken.
template <class T>
class Arrivals {
 public:
  explicit Arrivals(MainLoop& loop) : loop_(&loop), inbox_(loop.inbox()) {}

  // Any thread.
  void add(T value) {
    std::optional<MainLoop::Ticket> waiting;
    {
      const std::lock_guard lock(mutex_);
      values_.push_back(std::move(value));
      waiting = std::exchange(waiting_, std::nullopt);
    }
    if (waiting) MainLoop::redeem(inbox_, loop_, *waiting);
  }

  class Take {
   public:
    explicit Take(Arrivals& arrivals) : arrivals_(arrivals) {}
    bool await_ready() const noexcept { return false; }
    void await_suspend(std::coroutine_handle<Task::promise_type> frame) {
      arrivals_.wait(frame.promise().state());
    }
    std::vector<T> await_resume() { return arrivals_.takeAll(); }

   private:
    Arrivals& arrivals_;
  };

  // co_await arrivals.take(): all values added since the last call, in order; at least one. Always resumes at
  // a later turn of the loop, so that values added during one turn are taken together.
  Take take() { return Take(*this); }

 private:
  void wait(const std::shared_ptr<Task::State>& task) {
    const auto ticket = loop_->park(task->resumption());
    {
      const std::lock_guard lock(mutex_);
      if (values_.empty()) {
        waiting_ = ticket;
        return;
      }
    }
    MainLoop::redeem(inbox_, loop_, ticket);
  }

  std::vector<T> takeAll() {
    const std::lock_guard lock(mutex_);
    return std::exchange(values_, {});
  }

  MainLoop* loop_;
  std::shared_ptr<MainLoop::Inbox> inbox_;
  std::mutex mutex_;
  std::vector<T> values_;
  // Set while the task waits for a value.
  std::optional<MainLoop::Ticket> waiting_;
};

}  // namespace kestrune
