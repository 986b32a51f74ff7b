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

// The threads that measure folders. Each takes one folder; when none is waiting, it takes over part of
// another thread's folder, so that one huge folder keeps all threads as busy as thousands of small ones do. A
// thread stalled by a device is replaced until it recovers. Threads start with the first request.
class MeasurePool {
 public:
  struct Settings {
    std::string name = "kestrune-folder";
    std::function<void(const std::string& name)> prepare;  // runs first on each thread
    std::size_t threads = 1;                               // working at a time
    std::size_t maxThreads = 1;                            // stalled ones included
    std::chrono::milliseconds stallTimeout{2000};  // a thread without progress for that long is stalled
  };

  explicit MeasurePool(Settings settings);
  // Abandons the measures under way, without a report. Waits for stalled threads; the program itself exits
  // without running this.
  ~MeasurePool();
  MeasurePool(const MeasurePool&) = delete;
  MeasurePool& operator=(const MeasurePool&) = delete;

  // See `Folders::measure`.
  void measure(std::vector<FileLocation> folders, CancellationFlag isCancelled, Folders::MeasureDone done);

 private:
  struct Request {
    std::vector<FileLocation> folders;
    CancellationFlag isCancelled;
    Folders::MeasureDone done;
    std::size_t begun = 0;
  };
  // The measure of one folder, which several threads may share in parts.
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
    // Counts progress, on a cache line of its own.
    alignas(64) std::atomic<std::uint64_t> entries = 0;
    std::atomic<pid_t> id = 0;      // of the thread; 0: not started yet
    std::uint64_t entriesSeen = 0;  // at the supervisor's last look
    bool isBusy = false;
    bool isStalled = false;
    bool isRetired = false;
    std::thread thread;
  };

  // Called with the mutex locked.
  bool hasWork() const { return !parts_.empty() || !requests_.empty(); }
  void addWorkers();
  std::size_t activeWorkers() const;
  Part takePart();
  void updateHunger();
  void replaceStalled();
  std::vector<std::thread> takeRetired();

  void work(Worker& worker);
  void supervise();
  void walk(Worker& worker, Part part, std::span<char> buffer);
  void share(SubtreeWalk& walk, const std::shared_ptr<Measure>& measure);
  void finish(const std::shared_ptr<Measure>& measure, const FolderMeasure& found);

  const Settings settings_;
  std::atomic<bool> isClosing_ = false;
  std::atomic<bool> isHungry_ = false;  // some threads have nothing to do
  std::mutex mutex_;
  std::condition_variable workChanged_;
  std::condition_variable supervision_;
  std::deque<std::shared_ptr<Request>> requests_;  // with folders that haven't been started
  std::deque<Part> parts_;                         // split off, and not taken yet
  std::size_t idle_ = 0;
  std::vector<std::unique_ptr<Worker>> workers_;
  std::thread supervisor_;
};

}  // namespace kestrune::platform
