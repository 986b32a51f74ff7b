#include "runtime/WorkLane.h"

#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>
#include <utility>
#include <vector>

namespace kestrune {

struct ThreadLane::Shared {
  std::string name;
  std::function<void(const std::string&)> prepare;
  std::mutex mutex;
  std::condition_variable changed;
  std::deque<std::function<void()>> waiting;
  bool closed = false;
  std::size_t maxThreads = 1;
  std::size_t idle = 0;  // threads that have nothing to do
  std::vector<std::thread> threads;

  void runUntilClosed() {
    if (prepare) prepare(name);
    std::unique_lock lock(mutex);
    while (true) {
      ++idle;
      changed.wait(lock, [this] { return closed || !waiting.empty(); });
      --idle;
      if (closed) return;
      auto work = std::move(waiting.front());
      waiting.pop_front();
      lock.unlock();
      work();
      work = nullptr;  // destroyed before the lane counts as idle
      lock.lock();
    }
  }
};

ThreadLane::ThreadLane(std::string name, std::function<void(const std::string&)> prepare,
                       std::size_t maxThreads)
    : shared_(std::make_shared<Shared>()) {
  shared_->name = std::move(name);
  shared_->prepare = std::move(prepare);
  shared_->maxThreads = maxThreads;
}

ThreadLane::~ThreadLane() {
  {
    const std::lock_guard lock(shared_->mutex);
    shared_->closed = true;
  }
  shared_->changed.notify_all();
  for (std::thread& thread : shared_->threads) thread.join();
}

void ThreadLane::submit(std::function<void()> work) {
  const std::lock_guard lock(shared_->mutex);
  shared_->waiting.push_back(std::move(work));
  // A thread already woken for earlier work still counts as idle, so waiting work is counted too.
  const bool isCovered = shared_->waiting.size() <= shared_->idle;
  if (!isCovered && shared_->threads.size() < shared_->maxThreads) {
    shared_->threads.emplace_back([shared = shared_.get()] { shared->runUntilClosed(); });
  }
  shared_->changed.notify_one();
}

}  // namespace kestrune
