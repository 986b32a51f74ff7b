#include <algorithm>
#include <csignal>
#include <cstdio>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>
#include <dirent.h>
#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include "Measure.h"
#include "platform/linux/processes/LinuxProcessTable.h"

namespace {

using kestrune::bench::median;
using kestrune::bench::secondsOf;
using kestrune::platform::LinuxProcessTable;

constexpr double budget = 1.3;  // times the time of the bare loop

// Sleeping processes that fill the machine up to `total`. They end with this object.
class Crowd {
 public:
  explicit Crowd(std::int32_t total) {
    for (std::int32_t missing = total - static_cast<std::int32_t>(LinuxProcessTable().readings().size());
         missing > 0; --missing) {
      const pid_t parent = getpid();
      const pid_t child = fork();
      if (child < 0) return;
      if (child == 0) sleepUntilKilled(parent);
      children_.push_back(child);
    }
    isComplete_ = true;
  }
  ~Crowd() {
    for (const pid_t child : children_) kill(child, SIGKILL);
    for (const pid_t child : children_) waitpid(child, nullptr, 0);
  }
  Crowd(const Crowd&) = delete;
  Crowd& operator=(const Crowd&) = delete;

  bool isComplete() const { return isComplete_; }

 private:
  [[noreturn]] static void sleepUntilKilled(pid_t parent) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (getppid() != parent) _exit(1);
    while (true) pause();
  }

  std::vector<pid_t> children_;
  bool isComplete_ = false;
};

// The least that a C program has to do for the same result: list, open, read and close `stat`, read `exe`.
std::size_t bareWalk() {
  DIR* proc = opendir("/proc");
  if (proc == nullptr) return 0;
  std::size_t met = 0;
  while (const dirent* entry = readdir(proc)) {
    if (entry->d_name[0] < '1' || entry->d_name[0] > '9') continue;
    char path[300];
    char buffer[4096];
    std::snprintf(path, sizeof path, "%s/stat", entry->d_name);
    const int stat = openat(dirfd(proc), path, O_RDONLY | O_CLOEXEC);
    if (stat < 0) continue;
    if (read(stat, buffer, sizeof buffer) > 0) ++met;
    close(stat);
    std::snprintf(path, sizeof path, "%s/exe", entry->d_name);
    benchmark::DoNotOptimize(readlinkat(dirfd(proc), path, buffer, sizeof buffer));
    benchmark::DoNotOptimize(buffer);
  }
  closedir(proc);
  return met;
}

// As the program walks: everything about every process.
std::size_t tableWalk(LinuxProcessTable& table) {
  const auto readings = table.readings();
  benchmark::DoNotOptimize(readings.data());
  return readings.size();
}

template <class Walk>
double timed(benchmark::State& state, Walk walk, std::int64_t atLeast) {
  std::int64_t met = 0;
  const double took = secondsOf([&] { met = static_cast<std::int64_t>(walk()); });
  if (met < atLeast) state.SkipWithError("the walk misses processes");
  return took;
}

// Both walks in turn over the same processes. The time of an iteration is that of the table's walk.
void processWalk(benchmark::State& state) {
  const Crowd crowd(static_cast<std::int32_t>(state.range(0)));
  if (!crowd.isComplete()) {
    state.SkipWithError("skipped: the limit on processes is too low");
    return;
  }
  // Other processes may end meanwhile.
  const std::int64_t atLeast = state.range(0) * 95 / 100;
  LinuxProcessTable table;
  const auto walk = [&] { return tableWalk(table); };
  const double first = timed(state, walk, atLeast);
  std::vector<double> bare;
  std::vector<double> ours;
  // Of the two walks of one iteration, which ran under the same load from other programs.
  std::vector<double> ratios;
  while (state.KeepRunning()) {
    bare.push_back(timed(state, bareWalk, atLeast));
    ours.push_back(timed(state, walk, atLeast));
    ratios.push_back(ours.back() / bare.back());
    state.SetIterationTime(ours.back());
  }
  const double ratio = median(ratios);
  state.counters["firstMs"] = first * 1e3;
  state.counters["bareMs"] = median(bare) * 1e3;
  state.counters["tableMs"] = median(ours) * 1e3;
  state.counters["ratio"] = ratio;
  if (ratio > budget) {
    state.SkipWithError(("over budget: " + std::to_string(ratio) + " times the bare loop").c_str());
  }
}
BENCHMARK(processWalk)
    ->Arg(300)
    ->Arg(2000)
    ->Arg(10000)
    ->Iterations(31)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

}  // namespace
