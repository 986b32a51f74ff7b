#include "runtime/WorkLane.h"

#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>
#include <utility>

namespace kestrune {

struct ThreadLane::Shared {
  std::string name;
  std::function<void(const std::string&)> prepare;
  std::mutex mutex;
  std::condition_variable changed;
  std::deque<std::function<void()>> waiting;
  bool closed = false;
  std::thread thread;

  void runUntilClosed() {
    if (prepare) prepare(name);
    std::unique_lock lock(mutex);
    while (true) {
      changed.wait(lock, [this] { return closed || !waiting.empty(); });
      if (closed) return;
      auto work = std::move(waiting.front());
      waiting.pop_front();
      lock.unlock();
      work();
      work = nullptr;  // what it holds goes before the lane is idle again
      lock.lock();
    }
  }
};

ThreadLane::ThreadLane(std::string name, std::function<void(const std::string&)> prepare)
    : shared_(std::make_shared<Shared>()) {
  shared_->name = std::move(name);
  shared_->prepare = std::move(prepare);
}

ThreadLane::~ThreadLane() {
  {
    const std::lock_guard lock(shared_->mutex);
    shared_->closed = true;
  }
  shared_->changed.notify_all();
  if (shared_->thread.joinable()) shared_->thread.join();
}

void ThreadLane::submit(std::function<void()> work) {
  const std::lock_guard lock(shared_->mutex);
  shared_->waiting.push_back(std::move(work));
  if (!shared_->thread.joinable()) {
    shared_->thread = std::thread([shared = shared_.get()] { shared->runUntilClosed(); });
  }
  shared_->changed.notify_one();
}

}  // namespace kestrune
