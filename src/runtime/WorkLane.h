#pragma once

#include <functional>
#include <memory>
#include <string>

namespace kestrune {

// Runs work off the main thread, in the order in which it came. Lanes are separate so that work of one kind
// never waits for work of another: a reading that hangs holds up its own lane and nothing else.
class WorkLane {
 public:
  virtual ~WorkLane() = default;
  // Any thread.
  virtual void submit(std::function<void()> work) = 0;
};

// A lane of one thread, so that its work never overlaps. The thread begins with the first work.
class ThreadLane final : public WorkLane {
 public:
  // `prepare` runs first on the new thread; it names and slows it down as the platform can.
  ThreadLane(std::string name, std::function<void(const std::string& name)> prepare);
  // Waits for the work under way and drops what has not begun. The program itself ends without coming here.
  ~ThreadLane() override;
  ThreadLane(const ThreadLane&) = delete;
  ThreadLane& operator=(const ThreadLane&) = delete;

  void submit(std::function<void()> work) override;

 private:
  struct Shared;
  std::shared_ptr<Shared> shared_;
};

}  // namespace kestrune
