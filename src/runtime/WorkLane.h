#pragma once

#include <cstddef>
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

// A lane of threads, which begin when there is work for them: of one, so that its work never overlaps, or of
// several, so that work that hangs leaves a way past it.
class ThreadLane final : public WorkLane {
 public:
  // `prepare` runs first on each new thread; it names and slows it down as the platform can. `mostThreads` is
  // at least 1.
  ThreadLane(std::string name, std::function<void(const std::string& name)> prepare,
             std::size_t mostThreads = 1);
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
