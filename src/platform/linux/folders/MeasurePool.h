#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "platform/Folders.h"
#include "platform/linux/folders/SubtreeWalk.h"

namespace kestrune::platform {

// The threads that measure folders: each takes one folder, and when none waits any more, part of what another
// thread is at, so that one huge folder keeps them all busy as well as thousands of small ones. A thread that
// a device holds up is replaced until it comes back. They begin with the first work.
class MeasurePool {
 public:
  struct Settings {
    std::string name = "kestrune-folder";
    std::function<void(const std::string& name)> prepare;  // runs first on each thread
    std::size_t threads = 1;                               // at work at a time
    std::size_t mostThreads = 1;                           // with those that are held up
    std::chrono::milliseconds patience{2000};              // a thread without progress for so long is held up
  };

  explicit MeasurePool(Settings settings);
  // Ends the measures under way, without a report. Waits for those that a device holds up; the program itself
  // ends without coming here.
  ~MeasurePool();
  MeasurePool(const MeasurePool&) = delete;
  MeasurePool& operator=(const MeasurePool&) = delete;

  // As `Folders::measure`.
  void measure(std::vector<FileLocation> folders, CancellationFlag isCancelled, Folders::MeasureDone done);

 private:
  struct Request {
    std::vector<FileLocation> folders;
    CancellationFlag isCancelled;
    Folders::MeasureDone done;
    std::size_t begun = 0;
  };
  // The measure of one folder, which may be under way in several parts.
  struct Measure {
    std::shared_ptr<Request> request;
    std::size_t index = 0;
    MountRoots mounts;
    FolderMeasure found;
    std::size_t parts = 1;
  };
  struct Part {
    std::shared_ptr<Measure> measure;
    std::optional<SubtreeWalk::Level> level;  // absent: the whole folder
  };
  struct Worker {
    alignas(64) std::atomic<std::uint64_t> entries = 0;  // on a cache line of its own
    std::atomic<pid_t> id = 0;                           // of the thread; 0: it has not come so far
    std::uint64_t entriesSeen = 0;
    bool isBusy = false;
    bool isHeldUp = false;
    bool isGone = false;
    std::thread thread;
  };

  // Those from here on are called with the mutex locked.
  bool hasWork() const { return !parts_.empty() || !requests_.empty(); }
  void addWorkers();
  std::size_t ableWorkers() const;
  Part takePart();
  void updateHunger();
  void lookForHeldUp();
  std::vector<std::thread> takeGone();

  void work(Worker& worker);
  void supervise();
  void walk(Worker& worker, Part part, std::span<char> buffer);
  void share(SubtreeWalk& walk, const std::shared_ptr<Measure>& measure);
  void finish(const std::shared_ptr<Measure>& measure, const FolderMeasure& found);

  const Settings settings_;
  std::atomic<bool> isClosing_ = false;
  std::atomic<bool> isHungry_ = false;  // threads have nothing to do
  std::mutex mutex_;
  std::condition_variable workChanged_;
  std::condition_variable supervision_;
  std::deque<std::shared_ptr<Request>> requests_;  // those of which folders have not been begun
  std::deque<Part> parts_;                         // given away, and not taken yet
  std::size_t idle_ = 0;
  std::vector<std::unique_ptr<Worker>> workers_;
  std::thread supervisor_;
};

}  // namespace kestrune::platform
