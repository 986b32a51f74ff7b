#pragma once

#include <memory>

#include "runtime/Task.h"

namespace kestrune {

// The loop of every sampler: sleeps for `interval`, then ticks, until cancelled. The subject is held weakly
// and doesn't tick while `paused` is true. Intervals run from the end of one tick to the start of the next. A
// cancelled loop may tick once more, because cancelling only ends the sleep early.
template <class Subject>
Task pollingLoop(MainLoop&, std::weak_ptr<Subject> subject, Duration interval) {
  while (!co_await isCancelled()) {
    co_await sleep(interval);
    if (const auto strong = subject.lock(); strong && !strong->paused) strong->tick();
  }
}

// What `start(interval)` does in every sampler: cancels the previous loop, calls `prime`, then starts the new
// loop and stores it in `task`.
template <class Subject, class Prime>
void startPolling(MainLoop& loop, const std::shared_ptr<Subject>& subject, Task& task, Duration interval,
                  Prime prime) {
  task.cancel();
  prime();
  task = pollingLoop<Subject>(loop, subject, interval);
}

}  // namespace kestrune
