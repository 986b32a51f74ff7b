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

// A lane of threads that are started when there is work for them. With one thread, work never overlaps; with
// several, work that hangs doesn't block the rest.
class ThreadLane final : public WorkLane {
 public:
  // `prepare` runs first on each new thread, to set its name and priority. `maxThreads` is at least 1.
  ThreadLane(std::string name, std::function<void(const std::string& name)> prepare,
             std::size_t maxThreads = 1);
  // Waits for running work and drops the rest. The program itself exits without destroying its lanes.
  ~ThreadLane() override;
  ThreadLane(const ThreadLane&) = delete;
  ThreadLane& operator=(const ThreadLane&) = delete;

  void submit(std::function<void()> work) override;

 private:
  struct Shared;
  std::shared_ptr<Shared> shared_;
};

}  // namespace kestrune
