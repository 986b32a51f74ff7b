#include "platform/linux/processor/LinuxProcessors.h"

#include <algorithm>
#include <limits>
#include <numeric>
#include <string_view>
#include <utility>

#include <fcntl.h>
#include <unistd.h>

#include "platform/linux/files/Files.h"
#include "platform/linux/processor/CpuTopology.h"

namespace kestrune::platform {
namespace {

constexpr std::size_t firstBufferSize = 16384;
constexpr std::size_t maxBufferSize = std::size_t{1} << 22U;
constexpr std::int64_t maxTicks = std::numeric_limits<std::int32_t>::max();

// Capped, so that sums over garbage don't overflow; a gain of `maxTicks` restarts the counters anyway.
std::int64_t gain(const RawProcessor& before, const RawProcessor& now, RawState state) {
  if (now.ticks[state] <= before.ticks[state]) return 0;
  return static_cast<std::int64_t>(std::min<std::uint64_t>(now.ticks[state] - before.ticks[state], maxTicks));
}

}  // namespace

LinuxProcessors::LinuxProcessors(std::string root) : root_(std::move(root)), buffer_(firstBufferSize) {}

std::optional<std::vector<ProcessorTicks>> LinuxProcessors::processorTicks() {
  if (!read()) return std::nullopt;
  if (!sameProcessorsAsBefore()) {
    arrange();
    restart();
  } else if (const std::int64_t gained = measureGains(); gained > maxTicks - sum_) {
    restart();
  } else {
    addGains();
    sum_ += gained;
  }
  std::swap(raw_, lastRaw_);
  return ticks_;
}

bool LinuxProcessors::read() {
  if (file_ && readOnce()) return true;
  file_ = UniqueFd(open(below(root_, "proc/stat").c_str(), O_RDONLY | O_CLOEXEC));
  return file_ && readOnce();
}

bool LinuxProcessors::readOnce() {
  while (true) {
    // Always from the start: the kernel generates the text again only for offset 0.
    const ssize_t size = pread(file_.get(), buffer_.data(), buffer_.size(), 0);
    if (size <= 0) return false;
    const auto length = static_cast<std::size_t>(size);
    if (parseProcStat(std::string_view(buffer_.data(), length), raw_)) return true;
    if (length < buffer_.size() || buffer_.size() >= maxBufferSize) return false;
    buffer_.resize(buffer_.size() * 2);
  }
}

bool LinuxProcessors::sameProcessorsAsBefore() const {
  return std::ranges::equal(raw_, lastRaw_, {}, &RawProcessor::id, &RawProcessor::id);
}

void LinuxProcessors::arrange() {
  std::vector<std::int32_t> online;
  online.reserve(raw_.size());
  for (const RawProcessor& processor : raw_) online.push_back(processor.id);
  std::ranges::sort(online);
  const std::vector<std::int32_t> efficiency = efficiencyCpus(root_, online);

  order_.resize(raw_.size());
  std::iota(order_.begin(), order_.end(), std::size_t{0});
  std::ranges::sort(order_, {}, [&](std::size_t position) {
    const std::int32_t id = raw_[position].id;
    return std::pair(!std::ranges::binary_search(efficiency, id), id);
  });
}

std::int64_t LinuxProcessors::measureGains() {
  gains_.resize(order_.size());
  std::int64_t all = 0;
  for (std::size_t i = 0; i < order_.size(); ++i) {
    const RawProcessor& before = lastRaw_[order_[i]];
    const RawProcessor& now = raw_[order_[i]];
    const auto gained = [&](RawState state) { return gain(before, now, state); };
    gains_[i] = {.user = gained(rawUser),
                 .system = gained(rawSystem) + gained(rawIrq) + gained(rawSoftIrq) + gained(rawSteal),
                 .idle = gained(rawIdle) + gained(rawIoWait),
                 .nice = gained(rawNice)};
    all += gains_[i].user + gains_[i].system + gains_[i].idle + gains_[i].nice;
  }
  return all;
}

void LinuxProcessors::addGains() {
  for (std::size_t i = 0; i < ticks_.size(); ++i) {
    ticks_[i].user += static_cast<std::int32_t>(gains_[i].user);
    ticks_[i].system += static_cast<std::int32_t>(gains_[i].system);
    ticks_[i].idle += static_cast<std::int32_t>(gains_[i].idle);
    ticks_[i].nice += static_cast<std::int32_t>(gains_[i].nice);
  }
}

void LinuxProcessors::restart() {
  ticks_.assign(order_.size(), {});
  sum_ = 0;
}

}  // namespace kestrune::platform
