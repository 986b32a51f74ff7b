#include "runtime/MainLoop.h"

#include <algorithm>
#include <utility>

namespace kestrune {
namespace {

// A short timer would lose too much of its delay to the full leeway.
constexpr int leewayShare = 10;

}  // namespace

void MainLoop::Inbox::post(Job job) {
  const std::lock_guard lock(mutex_);
  if (waker_ == nullptr) return;
  jobs_.push_back(std::move(job));
  if (jobs_.size() == 1) waker_->wake();
}

MainLoop::MainLoop(const Clock& clock, LoopWaker& waker) : clock_(clock), waker_(waker) {
  inbox_->waker_ = &waker;
}

MainLoop::~MainLoop() {
  std::deque<Job> unrun;
  {
    const std::lock_guard lock(inbox_->mutex_);
    inbox_->waker_ = nullptr;
    unrun.swap(inbox_->jobs_);
  }
  // Destroying a job may post jobs or set timers, so the loop must still be intact.
  unrun.clear();
  std::exchange(timers_, {}).clear();
  std::exchange(parked_, {}).clear();
}

MainLoop::TimerId MainLoop::after(Duration delay, Job job) {
  const TimerId timer{clock_.continuousNow() + delay, nextSequence_++};
  const Duration leeway = std::min(waker_.leeway(), delay / leewayShare);
  timers_.emplace(timer, Timer{timer.deadline - leeway, std::move(job)});
  if (timers_.begin()->first == timer) waker_.setDeadline(timer.deadline);
  return timer;
}

bool MainLoop::cancelTimer(const TimerId& timer) {
  return timers_.erase(timer) > 0;
}

MainLoop::Ticket MainLoop::park(Job job) {
  const Ticket ticket = nextSequence_++;
  parked_.emplace(ticket, std::move(job));
  return ticket;
}

void MainLoop::redeem(const std::shared_ptr<Inbox>& inbox, MainLoop* loop, Ticket ticket) {
  // Runs on the loop's thread, and only while the loop exists.
  inbox->post([loop, ticket] {
    auto parked = loop->parked_.extract(ticket);
    if (!parked.empty()) parked.mapped()();
  });
}

void MainLoop::run() {
  waker_.acknowledge();
  runDueTimers();
  runWaitingJobs();
  waker_.setDeadline(nextDeadline());
}

std::optional<ContinuousTime> MainLoop::nextDeadline() const {
  if (timers_.empty()) return std::nullopt;
  return timers_.begin()->first.deadline;
}

bool MainLoop::hasJobs() const {
  const std::lock_guard lock(inbox_->mutex_);
  return !inbox_->jobs_.empty();
}

void MainLoop::runDueTimers() {
  const ContinuousTime now = clock_.continuousNow();
  const ContinuousTime horizon = now + waker_.leeway();
  const std::uint64_t firstNew = nextSequence_;
  auto timer = timers_.begin();
  while (timer != timers_.end() && timer->first.deadline <= horizon) {
    if (timer->first.sequence >= firstNew || timer->second.earliest > now) {
      ++timer;
      continue;
    }
    const auto due = timers_.extract(timer);
    due.mapped().job();
    timer = timers_.begin();  // the job may have set or cancelled timers
  }
}

void MainLoop::runWaitingJobs() {
  std::deque<Job> waiting;
  {
    const std::lock_guard lock(inbox_->mutex_);
    waiting.swap(inbox_->jobs_);
  }
  for (Job& job : waiting) std::exchange(job, nullptr)();
}

}  // namespace kestrune
