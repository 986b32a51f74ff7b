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

Task::State::Resumption::~Resumption() {
  if (state_->turn_ == turn_) state_->finish();
}

void Task::State::Resumption::use() {
  if (state_->turn_ != turn_) return;
  ++state_->turn_;
  state_->sleep_.reset();
  state_->frame_.resume();
}

void Task::State::cancel() {
  if (cancelled_->exchange(true) || !sleep_) return;
  const auto timer = *std::exchange(sleep_, std::nullopt);
  resumeAtNextTurn();
  loop_.cancelTimer(timer);
}

Job Task::State::resumption() {
  return [resumption = std::make_shared<Resumption>(shared_from_this())] { resumption->use(); };
}

void Task::State::resumeAtNextTurn() {
  loop_.post(resumption());
}

void Task::State::resumeAfter(Duration delay) {
  sleep_ = loop_.after(delay, resumption());
}

void Task::State::finish() {
  sleep_.reset();
  std::exchange(frame_, nullptr).destroy();
}

}  // namespace kestrune
