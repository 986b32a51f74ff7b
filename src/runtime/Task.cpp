#include "runtime/Task.h"

namespace kestrune {

void Task::cancel() const {
  if (state_) state_->cancel();
}

bool Task::isCancelled() const {
  return state_ && state_->isCancelled();
}

bool Task::isDone() const {
  return state_ && state_->isDone();
}

Task::State::~State() {
  if (frame_) frame_.destroy();
}

void Task::State::cancel() {
  if (cancelled_.exchange(true)) return;
  if (sleep_ && loop_.cancelTimer(*std::exchange(sleep_, std::nullopt))) resumeAtNextTurn();
}

void Task::State::resumeAtNextTurn() {
  loop_.post([state = shared_from_this()] { state->resume(); });
}

void Task::State::resumeAfter(Duration delay) {
  sleep_ = loop_.after(delay, [state = shared_from_this()] {
    state->sleep_.reset();
    state->resume();
  });
}

void Task::State::resume() {
  if (frame_) frame_.resume();
}

void Task::State::finish() {
  std::exchange(frame_, nullptr).destroy();
}

}  // namespace kestrune
