#include "ui/qt/mount/Scheduler.h"

#include <algorithm>
#include <utility>

namespace kestrune::ui::qt {

Scheduler::Scheduler(MainLoop& loop, std::function<void()> finish)
    : loop_(loop), finish_(std::move(finish)) {}

Scheduler::~Scheduler() {
  if (timer_) loop_.cancelTimer(*timer_);
}

void Scheduler::markChanged(Evaluated& component) {
  if (std::ranges::find(changed_, &component) == changed_.end()) changed_.push_back(&component);
  if (!active_ || timer_) return;
  timer_ = loop_.after(frame, [this] {
    timer_.reset();
    flush();
  });
}

void Scheduler::forget(const Evaluated& component) {
  std::erase(changed_, &component);
}

void Scheduler::setActive(bool active) {
  active_ = active;
  if (active) {
    flush();
  } else if (timer_) {
    loop_.cancelTimer(*std::exchange(timer_, std::nullopt));
  }
}

void Scheduler::flush() {
  if (changed_.empty()) return;
  while (!changed_.empty()) {
    // Outer components first: they may hand new input to inner ones, or remove them.
    const auto outermost = std::ranges::min_element(changed_, {}, &Evaluated::depth);
    Evaluated& component = **outermost;
    changed_.erase(outermost);
    component.evaluate();
  }
  finish_();
}

}  // namespace kestrune::ui::qt
