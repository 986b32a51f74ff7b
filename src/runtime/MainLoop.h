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

// Wakes the thread that drives a loop.
class LoopWaker {
 public:
  virtual ~LoopWaker() = default;
  // Makes the driver run the loop soon. Any thread.
  virtual void wake() = 0;
  // Makes the driver run the loop at `deadline`; absent: no timer is pending. Main thread.
  virtual void setDeadline(std::optional<ContinuousTime> deadline) = 0;
  // How much too early a timer may fire if the loop is awake anyway, so that timers share a wake-up.
  virtual Duration leeway() const { return {}; }
  // Clears all wake-ups so far. Called at the start of each run. Main thread.
  virtual void acknowledge() = 0;
};

// The main thread's queue of jobs and its timers on the continuous clock. It never blocks: the driver calls
// `run` whenever the waker asks for it. Main thread only, except for `Inbox`.
class MainLoop {
 public:
  // The side of the loop that other threads use. May outlive the loop; jobs posted after its end are dropped.
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

  // A pending timer. Timers fire by deadline; those with the same deadline, in the order in which they were
  // set.
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

  // Runs `job` at the next turn, after all jobs posted before it.
  void post(Job job) { inbox_->post(std::move(job)); }
  const std::shared_ptr<Inbox>& inbox() const { return inbox_; }

  // Runs `job` once, `delay` from now; earlier by at most the waker's leeway, and at most a tenth of `delay`,
  // if the loop is awake then.
  TimerId after(Duration delay, Job job);
  // True if the timer was still pending.
  bool cancelTimer(const TimerId& timer);

  // Keeps `job` on the main thread until some thread redeems the ticket; the job then runs at the next turn.
  // A job whose ticket is never redeemed is destroyed with the loop.
  Ticket park(Job job);
  static void redeem(const std::shared_ptr<Inbox>& inbox, MainLoop* loop, Ticket ticket);

  // One turn: the timers that are due, then the waiting jobs. Jobs added meanwhile wait for the next turn, so
  // that a chain of jobs can't starve the driver's other work.
  void run();

  // The latest time for the next `run` if no job is posted before.
  std::optional<ContinuousTime> nextDeadline() const;
  bool hasJobs() const;

  const Clock& clock() const { return clock_; }

 private:
  struct Timer {
    ContinuousTime earliest{};
    Job job;
  };
  void runDueTimers();
  void runWaitingJobs();

  const Clock& clock_;
  LoopWaker& waker_;
  std::shared_ptr<Inbox> inbox_ = std::make_shared<Inbox>();
  std::map<TimerId, Timer> timers_;
  std::unordered_map<Ticket, Job> parked_;
  std::uint64_t nextSequence_ = 1;
};

}  // namespace kestrune
