#pragma once

#include <optional>
#include <vector>

#include "runtime/MainLoop.h"

namespace kestrune::ui::qt {

// A mounted component, as far as the scheduler needs it.
class Evaluated {
 public:
  virtual ~Evaluated() = default;
  virtual int depth() const = 0;
  // Evaluates the body and brings the screen up to date with it.
  virtual void evaluate() = 0;
};

// Decides when changed components are evaluated again: all changes within one frame together, and none while
// the window can't be seen. Main thread only.
class Scheduler {
 public:
  static constexpr Duration frame = std::chrono::milliseconds(16);

  // `finish` runs after the evaluations of a frame, to lay out what they changed.
  Scheduler(MainLoop& loop, std::function<void()> finish);
  ~Scheduler();
  Scheduler(const Scheduler&) = delete;
  Scheduler& operator=(const Scheduler&) = delete;

  void markChanged(Evaluated& component);
  // Call when the component was evaluated from outside, or is destroyed.
  void forget(const Evaluated& component);
  // Becoming active evaluates at once what changed in the meantime.
  void setActive(bool active);
  bool isActive() const { return active_; }
  // Evaluates all changed components now.
  void flush();

 private:
  MainLoop& loop_;
  std::function<void()> finish_;
  std::vector<Evaluated*> changed_;
  std::optional<MainLoop::TimerId> timer_;
  bool active_ = false;
};

}  // namespace kestrune::ui::qt
