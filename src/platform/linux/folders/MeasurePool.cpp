#include "platform/linux/folders/MeasurePool.h"

#include <algorithm>
#include <limits>
#include <string_view>
#include <utility>

#include <unistd.h>

#include "platform/linux/files/Files.h"

namespace kestrune::platform {
namespace {

// The buffer size that the C library's readdir uses.
constexpr std::size_t bufferBytes = 32768;

// A thread that is only waiting for a CPU isn't stalled.
bool isRunnable(pid_t thread) {
  const std::string stat =
      readFile("/proc/self/task/" + std::to_string(thread) + "/stat").value_or(std::string());
  const auto name = stat.rfind(')');
  return name != std::string::npos && std::string_view(stat).substr(name).starts_with(") R");
}

}  // namespace

MeasurePool::MeasurePool(Settings settings) : settings_(std::move(settings)) {}

MeasurePool::~MeasurePool() {
  isClosing_ = true;
  {
    const std::lock_guard lock(mutex_);
    workChanged_.notify_all();
    supervision_.notify_all();
  }
  // The supervisor adds workers, so it is joined first.
  if (supervisor_.joinable()) supervisor_.join();
  for (const auto& worker : workers_) worker->thread.join();
}

void MeasurePool::measure(std::vector<FileLocation> folders, CancellationFlag isCancelled,
                          Folders::MeasureDone done) {
  if (folders.empty()) return;
  const std::lock_guard lock(mutex_);
  requests_.push_back(
      std::make_shared<Request>(Request{std::move(folders), std::move(isCancelled), std::move(done)}));
  updateHunger();
  addWorkers();
  if (!supervisor_.joinable()) supervisor_ = std::thread([this] { supervise(); });
  workChanged_.notify_all();
  supervision_.notify_one();
}

void MeasurePool::addWorkers() {
  for (std::size_t active = activeWorkers(); active < settings_.threads; ++active) {
    if (workers_.size() >= settings_.maxThreads) return;
    Worker& worker = *workers_.emplace_back(std::make_unique<Worker>());
    worker.thread = std::thread([this, &worker] { work(worker); });
  }
}

std::size_t MeasurePool::activeWorkers() const {
  return static_cast<std::size_t>(std::ranges::count_if(
      workers_, [](const auto& worker) { return !worker->isStalled && !worker->isRetired; }));
}

void MeasurePool::updateHunger() {
  isHungry_.store(requests_.empty() && idle_ > parts_.size(), std::memory_order_relaxed);
}

// Folders already started come before new ones.
MeasurePool::Part MeasurePool::takePart() {
  Part part;
  if (!parts_.empty()) {
    part = std::move(parts_.front());
    parts_.pop_front();
    return part;
  }
  const auto& request = requests_.front();
  part.measure = std::make_shared<Measure>();
  part.measure->request = request;
  part.measure->index = request->begun++;
  if (request->begun == request->folders.size()) requests_.pop_front();
  return part;
}

void MeasurePool::work(Worker& worker) {
  if (settings_.prepare) settings_.prepare(settings_.name);
  worker.id = gettid();
  std::vector<char> buffer(bufferBytes);
  std::unique_lock lock(mutex_);
  while (true) {
    worker.isStalled = false;
    // It may have been replaced while it was stalled.
    if (activeWorkers() > settings_.threads) {
      worker.isRetired = true;
      return;
    }
    ++idle_;
    updateHunger();
    workChanged_.wait(lock, [this] { return isClosing_ || hasWork(); });
    --idle_;
    if (isClosing_) return;
    Part part = takePart();
    updateHunger();
    worker.isBusy = true;
    lock.unlock();
    walk(worker, std::move(part), buffer);
    lock.lock();
    worker.isBusy = false;
    ++worker.entries;
  }
}

void MeasurePool::walk(Worker& worker, Part part, std::span<char> buffer) {
  const std::shared_ptr<Measure> measure = std::move(part.measure);
  const Request& request = *measure->request;
  SubtreeWalk walk({*request.isCancelled, isClosing_, worker.entries, measure->mounts, buffer});
  if (part.level) {
    walk.begin(*std::move(part.level));
  } else if (!request.isCancelled->load()) {
    walk.begin(request.folders[measure->index]);
  }
  while (walk.step()) {
    if (isHungry_.load(std::memory_order_relaxed)) share(walk, measure);
  }
  finish(measure, walk.found());
}

void MeasurePool::share(SubtreeWalk& walk, const std::shared_ptr<Measure>& measure) {
  const std::lock_guard lock(mutex_);
  if (!isHungry_.load(std::memory_order_relaxed)) return;
  auto level = walk.split();
  if (!level) return;
  ++measure->parts;
  parts_.push_back({measure, std::move(level)});
  updateHunger();
  workChanged_.notify_one();
}

void MeasurePool::finish(const std::shared_ptr<Measure>& measure, const FolderMeasure& found) {
  {
    const std::lock_guard lock(mutex_);
    FolderMeasure& sum = measure->found;
    sum.files += found.files;
    sum.bytes += std::min(found.bytes, std::numeric_limits<std::uint64_t>::max() - sum.bytes);
    if (--measure->parts > 0) return;
  }
  if (!isClosing_) measure->request->done(measure->index, measure->found);
}

void MeasurePool::supervise() {
  std::unique_lock lock(mutex_);
  while (!isClosing_) {
    supervision_.wait(lock, [this] {
      const bool isAnyBusy = std::ranges::any_of(workers_, [](const auto& worker) { return worker->isBusy; });
      return isClosing_ || hasWork() || isAnyBusy;
    });
    supervision_.wait_for(lock, settings_.stallTimeout, [this] { return isClosing_.load(); });
    if (isClosing_) return;
    replaceStalled();
    auto retired = takeRetired();
    lock.unlock();
    for (std::thread& thread : retired) thread.join();
    lock.lock();
  }
}

void MeasurePool::replaceStalled() {
  for (const auto& worker : workers_) {
    const std::uint64_t entries = worker->entries;
    const bool hasStopped = worker->isBusy && entries == worker->entriesSeen;
    worker->isStalled = hasStopped && (worker->isStalled || !isRunnable(worker->id));
    worker->entriesSeen = entries;
  }
  // New workers take what is waiting, or share the work of those that still make progress.
  const bool isAnyWorking =
      std::ranges::any_of(workers_, [](const auto& worker) { return worker->isBusy && !worker->isStalled; });
  if (hasWork() || isAnyWorking) addWorkers();
}

std::vector<std::thread> MeasurePool::takeRetired() {
  std::vector<std::thread> retired;
  std::erase_if(workers_, [&](const auto& worker) {
    if (worker->isRetired) retired.push_back(std::move(worker->thread));
    return worker->isRetired;
  });
  return retired;
}

}  // namespace kestrune::platform
