#pragma once

#include <memory>

#include "runtime/Task.h"

namespace kestrune {

// The loop of every sampler: sleeps for `interval`, then ticks, until it is cancelled. The subject is held
// weakly and is let alone while its `paused` is true. Intervals count from the end of one tick to the start
// of the next. A cancelled loop can do one last tick, since a cancelled sleep counts as a finished one.
template <class Subject>
Task pollingLoop(MainLoop&, std::weak_ptr<Subject> subject, Duration interval) {
  while (!co_await isCancelled()) {
    co_await sleep(interval);
    if (const auto strong = subject.lock(); strong && !strong->paused) strong->tick();
  }
}

// The contract of `start(interval)` that all samplers share: ends the loop that is there, does the priming
// step, then creates the new loop and keeps it in `task`.
template <class Subject, class Prime>
void startPolling(MainLoop& loop, const std::shared_ptr<Subject>& subject, Task& task, Duration interval,
                  Prime prime) {
  task.cancel();
  prime();
  task = pollingLoop<Subject>(loop, subject, interval);
}

}  // namespace kestrune
