#include "platform/linux/folders/MeasurePool.h"

#include <algorithm>
#include <limits>
#include <optional>
#include <string_view>
#include <utility>

#include <unistd.h>

#include "platform/linux/files/Files.h"

namespace kestrune::platform {
namespace {

// What file systems' own readers take at once.
constexpr std::size_t bufferBytes = 32768;

// A thread that could run, and doesn't because others do, isn't held up by any device.
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
  // The supervisor adds workers, so it goes first.
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
  for (std::size_t able = ableWorkers(); able < settings_.threads; ++able) {
    if (workers_.size() >= settings_.mostThreads) return;
    Worker& worker = *workers_.emplace_back(std::make_unique<Worker>());
    worker.thread = std::thread([this, &worker] { work(worker); });
  }
}

std::size_t MeasurePool::ableWorkers() const {
  return static_cast<std::size_t>(std::ranges::count_if(
      workers_, [](const auto& worker) { return !worker->isHeldUp && !worker->isGone; }));
}

void MeasurePool::updateHunger() {
  isHungry_.store(requests_.empty() && idle_ > parts_.size(), std::memory_order_relaxed);
}

// What has been begun is finished first, as long as it is shared.
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
    worker.isHeldUp = false;
    if (ableWorkers() > settings_.threads) {  // it has been replaced meanwhile
      worker.isGone = true;
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
    supervision_.wait_for(lock, settings_.patience, [this] { return isClosing_.load(); });
    if (isClosing_) return;
    lookForHeldUp();
    auto gone = takeGone();
    lock.unlock();
    for (std::thread& thread : gone) thread.join();
    lock.lock();
  }
}

void MeasurePool::lookForHeldUp() {
  for (const auto& worker : workers_) {
    const std::uint64_t entries = worker->entries;
    const bool isStill = worker->isBusy && entries == worker->entriesSeen;
    worker->isHeldUp = isStill && (worker->isHeldUp || !isRunnable(worker->id));
    worker->entriesSeen = entries;
  }
  // Others go on with what waits, and share what those are at that still can.
  const bool isAnyAble =
      std::ranges::any_of(workers_, [](const auto& worker) { return worker->isBusy && !worker->isHeldUp; });
  if (hasWork() || isAnyAble) addWorkers();
}

std::vector<std::thread> MeasurePool::takeGone() {
  std::vector<std::thread> gone;
  std::erase_if(workers_, [&](const auto& worker) {
    if (worker->isGone) gone.push_back(std::move(worker->thread));
    return worker->isGone;
  });
  return gone;
}

}  // namespace kestrune::platform
