#pragma once

#include <chrono>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "runtime/Clock.h"
#include "runtime/MainLoop.h"
#include "runtime/WorkLane.h"

namespace kestrune::test {

// Both clocks; they stand still until a test moves them.
class TestClock final : public Clock {
 public:
  Date now() const override { return wall_; }
  ContinuousTime continuousNow() const override { return continuous_; }

  void setWall(Date date) { wall_ = date; }
  void setContinuous(ContinuousTime time) {
    wall_ = wall_ + std::chrono::duration<double>(time - continuous_).count();
    continuous_ = time;
  }

 private:
  Date wall_{800000000};  // 2026-05-09T06:13:20Z
  ContinuousTime continuous_{std::chrono::hours(1)};
};

// In a test the loop is driven by hand.
class NoWaker final : public LoopWaker {
 public:
  void wake() override {}
  void setDeadline(std::optional<ContinuousTime>) override {}
  void acknowledge() override {}
};

// A lane whose work runs when the test calls `run`.
class ManualLane final : public WorkLane {
 public:
  void submit(std::function<void()> work) override { waiting_.push_back(std::move(work)); }
  std::size_t waiting() const { return waiting_.size(); }
  // Runs all waiting work. False if there was none.
  bool run() {
    auto now = std::exchange(waiting_, {});
    for (auto& work : now) work();
    return !now.empty();
  }

 private:
  std::vector<std::function<void()>> waiting_;
};

// Drives a loop over the test clock.
class TestLoop {
 public:
  TestLoop() = default;

  TestClock clock;
  NoWaker waker;
  std::shared_ptr<ManualLane> lane = std::make_shared<ManualLane>();
  MainLoop loop{clock, waker};
  bool holdsLane = false;  // while set, background work doesn't run by itself

  // Runs everything that is due now, including background work, until nothing is left.
  void settle() {
    do {
      loop.run();
    } while (loop.hasJobs() || (!holdsLane && lane->run()) || isTimerDue());
  }

  // Moves both clocks forward and fires every timer on the way at its own time.
  void advance(Duration duration) {
    const ContinuousTime end = clock.continuousNow() + duration;
    settle();
    for (auto next = loop.nextDeadline(); next && *next <= end; next = loop.nextDeadline()) {
      clock.setContinuous(*next);
      settle();
    }
    clock.setContinuous(end);
  }

 private:
  bool isTimerDue() const {
    const auto next = loop.nextDeadline();
    return next && *next <= clock.continuousNow();
  }
};

}  // namespace kestrune::test
