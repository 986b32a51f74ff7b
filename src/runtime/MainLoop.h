#pragma once

#include <compare>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <unordered_map>

#include "runtime/Clock.h"

namespace kestrune {

using Job = std::function<void()>;

// What ends the wait of the thread that drives a loop.
class LoopWaker {
 public:
  virtual ~LoopWaker() = default;
  // Makes the driver run the loop soon. Any thread.
  virtual void wake() = 0;
  // Makes the driver run the loop at that time; absent: no timer is pending. Main thread.
  virtual void setDeadline(std::optional<ContinuousTime> deadline) = 0;
  // Called before a run: what woke the driver so far has been seen. Main thread.
  virtual void acknowledge() = 0;
};

// The one main thread's queue of jobs and its timers on the continuous clock. It waits for nothing
// itself: whoever drives it calls `run` whenever the waker says so. Main thread only, except for `Inbox`.
class MainLoop {
 public:
  // The loop's side that other threads see. It outlives the loop; what comes after the loop's end is dropped.
  class Inbox {
   public:
    // Any thread.
    void post(Job job);

   private:
    friend class MainLoop;
    std::mutex mutex_;
    std::deque<Job> jobs_;
    LoopWaker* waker_ = nullptr;
  };

  // A pending timer: fires by deadline, then in the order in which timers were set.
  struct TimerId {
    ContinuousTime deadline{};
    std::uint64_t sequence = 0;
    friend auto operator<=>(const TimerId&, const TimerId&) = default;
  };

  using Ticket = std::uint64_t;

  // Both must outlive the loop.
  MainLoop(const Clock& clock, LoopWaker& waker);
  ~MainLoop();
  MainLoop(const MainLoop&) = delete;
  MainLoop& operator=(const MainLoop&) = delete;

  // Runs `job` at the loop's next turn, after all that was posted before.
  void post(Job job) { inbox_->post(std::move(job)); }
  const std::shared_ptr<Inbox>& inbox() const { return inbox_; }

  // Runs `job` once, `delay` from now.
  TimerId after(Duration delay, Job job);
  // True if the timer was still pending.
  bool cancelTimer(const TimerId& timer);

  // Keeps `job` on the main thread until some thread redeems the ticket; then it runs at the loop's next
  // turn. A ticket that is never redeemed ends with the loop.
  Ticket park(Job job);
  static void redeem(const std::shared_ptr<Inbox>& inbox, MainLoop* loop, Ticket ticket);

  // One turn: the timers that are due, then the jobs that are waiting. What the jobs add waits for the next
  // turn, so that a chain of them can't shut out the driver's other work.
  void run();

  // When `run` has to be called next at the latest, if no job is posted before.
  std::optional<ContinuousTime> nextDeadline() const;
  bool hasJobs() const;

  const Clock& clock() const { return clock_; }

 private:
  void runDueTimers();
  void runWaitingJobs();

  const Clock& clock_;
  LoopWaker& waker_;
  std::shared_ptr<Inbox> inbox_ = std::make_shared<Inbox>();
  std::map<TimerId, Job> timers_;
  std::unordered_map<Ticket, Job> parked_;
  std::uint64_t nextSequence_ = 1;
};

}  // namespace kestrune
