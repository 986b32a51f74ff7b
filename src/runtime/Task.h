#pragma once

#include <atomic>
#include <coroutine>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <optional>
#include <type_traits>
#include <utility>

#include "runtime/Cancellation.h"
#include "runtime/MainLoop.h"
#include "runtime/WorkLane.h"

namespace kestrune {

// A handle to a coroutine that runs on the main loop. Copies refer to the same task; dropping all of them
// does not end it. A coroutine function takes the loop as its first parameter:
//
//   Task refresh(MainLoop& loop, std::weak_ptr<Thing> thing) { co_await sleep(1s); … }
//
// The body starts at the loop's next turn and always runs on the main thread. Cancelling is cooperative: it
// sets a flag and ends a sleep early; the body checks the flag where it can stop. A task that is still
// suspended when the loop is destroyed is destroyed with it.
class Task {
 public:
  class State;
  class promise_type;

  Task() = default;

  explicit operator bool() const { return state_ != nullptr; }
  void cancel() const;
  bool isCancelled() const;
  bool isDone() const;

 private:
  explicit Task(std::shared_ptr<State> state) : state_(std::move(state)) {}
  std::shared_ptr<State> state_;
};

class Task::State : public std::enable_shared_from_this<State> {
 public:
  // The right to resume the coroutine, used once. If it is destroyed unused, the frame is destroyed too, even
  // if handles to the task remain.
  class Resumption {
   public:
    explicit Resumption(std::shared_ptr<State> state) : state_(std::move(state)), turn_(++state_->turn_) {}
    ~Resumption();
    Resumption(const Resumption&) = delete;
    Resumption& operator=(const Resumption&) = delete;
    void use();

   private:
    std::shared_ptr<State> state_;
    std::uint64_t turn_;
  };

  State(MainLoop& loop, std::coroutine_handle<promise_type> frame) : loop_(loop), frame_(frame) {}
  State(const State&) = delete;
  State& operator=(const State&) = delete;

  MainLoop& loop() { return loop_; }
  void cancel();
  bool isCancelled() const { return cancelled_->load(std::memory_order_relaxed); }
  CancellationFlag cancellationFlag() const { return cancelled_; }
  bool isDone() const { return frame_ == nullptr; }

  // A job that resumes the body. Invalidates the previous one.
  Job resumption();
  void resumeAtNextTurn();
  void resumeAfter(Duration delay);
  // Destroys the body with all its locals.
  void finish();

 private:
  MainLoop& loop_;
  // Empty once the body has ended.
  std::coroutine_handle<promise_type> frame_;
  // Of the latest resumption; earlier ones are invalid.
  std::uint64_t turn_ = 0;
  std::optional<MainLoop::TimerId> sleep_;
  std::shared_ptr<std::atomic<bool>> cancelled_ = std::make_shared<std::atomic<bool>>(false);
};

class Task::promise_type {
 public:
  template <class... Arguments>
  explicit promise_type(MainLoop& loop, Arguments&...)
      : state_(std::make_shared<State>(loop, std::coroutine_handle<promise_type>::from_promise(*this))),
        weakState_(state_) {}

  struct Begin {
    bool await_ready() const noexcept { return false; }
    void await_suspend(std::coroutine_handle<promise_type> frame) const noexcept {
      frame.promise().state()->resumeAtNextTurn();
    }
    void await_resume() const noexcept {}
  };
  struct End {
    bool await_ready() const noexcept { return false; }
    void await_suspend(std::coroutine_handle<promise_type> frame) const noexcept {
      frame.promise().state()->finish();
    }
    void await_resume() const noexcept {}
  };

  // The state owns the frame, not the other way round, so the handle takes over the only strong reference.
  Task get_return_object() { return Task(std::exchange(state_, nullptr)); }
  Begin initial_suspend() noexcept { return {}; }
  End final_suspend() noexcept { return {}; }
  void return_void() noexcept {}
  void unhandled_exception() noexcept { std::abort(); }

  // Never null while the body runs, because the state owns its frame.
  std::shared_ptr<State> state() const { return std::shared_ptr<State>(weakState_); }

 private:
  std::shared_ptr<State> state_;
  std::weak_ptr<State> weakState_;
};

// co_await sleep(interval): resumes after `interval` on the continuous clock, or at the next turn of the loop
// if the task is cancelled.
class SleepAwaiter {
 public:
  explicit SleepAwaiter(Duration interval) : interval_(interval) {}
  bool await_ready() const noexcept { return false; }
  void await_suspend(std::coroutine_handle<Task::promise_type> frame) const {
    const auto state = frame.promise().state();
    if (state->isCancelled()) {
      state->resumeAtNextTurn();
    } else {
      state->resumeAfter(interval_);
    }
  }
  void await_resume() const noexcept {}

 private:
  Duration interval_;
};
inline SleepAwaiter sleep(Duration interval) {
  return SleepAwaiter(interval);
}

// co_await yieldToLoop(): resumes at the loop's next turn, so that other jobs can run.
class YieldAwaiter {
 public:
  bool await_ready() const noexcept { return false; }
  void await_suspend(std::coroutine_handle<Task::promise_type> frame) const {
    frame.promise().state()->resumeAtNextTurn();
  }
  void await_resume() const noexcept {}
};
inline YieldAwaiter yieldToLoop() {
  return {};
}

// co_await isCancelled(): true if the awaiting task has been cancelled.
class IsCancelledAwaiter {
 public:
  bool await_ready() const noexcept { return false; }
  bool await_suspend(std::coroutine_handle<Task::promise_type> frame) {
    cancelled_ = frame.promise().state()->isCancelled();
    return false;
  }
  bool await_resume() const noexcept { return cancelled_; }

 private:
  bool cancelled_ = false;
};
inline IsCancelledAwaiter isCancelled() {
  return {};
}

// co_await cancellationFlag(): the flag of the awaiting task, for work that it has other threads do.
class CancellationFlagAwaiter {
 public:
  bool await_ready() const noexcept { return false; }
  bool await_suspend(std::coroutine_handle<Task::promise_type> frame) {
    flag_ = frame.promise().state()->cancellationFlag();
    return false;
  }
  CancellationFlag await_resume() noexcept { return std::move(flag_); }

 private:
  CancellationFlag flag_;
};
inline CancellationFlagAwaiter cancellationFlag() {
  return {};
}

// co_await background(lane, work): runs `work` in the lane and resumes with its result on the main thread.
// `work` is destroyed in the lane, so it must own nothing that belongs to the main thread. Name the work
// before awaiting it: g++ 12 destroys an unnamed capturing lambda inside such an expression twice.
template <class Work>
class BackgroundAwaiter {
 public:
  using Result = std::invoke_result_t<Work&>;

  BackgroundAwaiter(WorkLane& lane, Work work)
      : lane_(lane), work_(std::make_shared<Work>(std::move(work))) {}

  bool await_ready() const noexcept { return false; }
  void await_suspend(std::coroutine_handle<Task::promise_type> frame) {
    const auto state = frame.promise().state();
    MainLoop& loop = state->loop();
    const auto ticket = loop.park(state->resumption());
    lane_.submit([work = std::exchange(work_, nullptr), result = result_, inbox = loop.inbox(), loop = &loop,
                  ticket]() mutable {
      result->emplace((*work)());
      work.reset();
      MainLoop::redeem(inbox, loop, ticket);
    });
  }
  Result await_resume() { return *std::move(*result_); }

 private:
  WorkLane& lane_;
  std::shared_ptr<Work> work_;
  std::shared_ptr<std::optional<Result>> result_ = std::make_shared<std::optional<Result>>();
};
template <class Work>
BackgroundAwaiter<Work> background(WorkLane& lane, Work work) {
  return BackgroundAwaiter<Work>(lane, std::move(work));
}

}  // namespace kestrune
