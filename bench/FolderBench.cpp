// What measuring folders costs: a warm tree of 300,000 files in 20,000 directories against a bare walker and
// du, cancelling a measurement, memory, and a result in a long list.
#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <future>
#include <memory>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include <benchmark/benchmark.h>
#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "Measure.h"
#include "folders/FolderItems.h"
#include "platform/linux/files/UniqueFd.h"
#include "platform/linux/folders/MeasurePool.h"
#include "support/TemporaryFolder.h"

namespace {

namespace fs = std::filesystem;
using kestrune::FolderItem;
using kestrune::FolderItems;
using kestrune::bench::median;
using kestrune::bench::secondsOf;
using kestrune::platform::FileLocation;
using kestrune::platform::FolderMeasure;
using kestrune::platform::MeasurePool;
using kestrune::platform::UniqueFd;

constexpr double walkBudget = 1.2;      // times the time of the bare walker
constexpr double duBudget = 1.5;        // times as fast as du
constexpr double cancelBudget = 0.050;  // seconds
constexpr int threads = 2;

void makeFiles(const std::string& folder, int count) {
  const UniqueFd directory(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  for (int i = 0; i < count; ++i) {
    const std::string name = "some file " + std::to_string(i) + ".txt";
    const UniqueFd file(openat(directory.get(), name.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0644));
    if (ftruncate(file.get(), 1000 + i) != 0) std::abort();
  }
}

// Created on first use, for the rest of the run.
class Trees {
 public:
  static constexpr std::uint64_t files = 300000;
  static constexpr std::uint64_t flatFiles = 300000;

  static const Trees& made() {
    static const Trees trees;
    return trees;
  }

  // 20 × 20 × 50 directories of 15 files.
  std::string nested() const { return folder_ / "nested"; }
  // One directory.
  std::string flat() const { return folder_ / "flat"; }

 private:
  Trees() {
    for (int i = 0; i < 20 * 20 * 50; ++i) {
      const std::string folder = nested() + "/" + std::to_string(i / 1000) + "/" +
                                 std::to_string(i / 50 % 20) + "/" + std::to_string(i % 50);
      fs::create_directories(folder);
      makeFiles(folder, 15);
    }
    fs::create_directories(flat());
    makeFiles(flat(), flatFiles);
  }

  kestrune::test::TemporaryFolder folder_;
};

// The least that a C program has to do for the same result.
void walkBare(int parent, const char* name, FolderMeasure& sum) {
  const UniqueFd directory(openat(parent, name, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
  if (!directory) return;
  alignas(16) std::array<char, 32768> buffer;
  while (true) {
    const ssize_t size = getdents64(directory.get(), buffer.data(), buffer.size());
    if (size <= 0) return;
    for (std::size_t offset = 0; offset < static_cast<std::size_t>(size);) {
      const auto* entry = reinterpret_cast<const dirent64*>(&buffer[offset]);
      offset += entry->d_reclen;
      const std::string_view entryName(&entry->d_name[0]);
      if (entry->d_type == DT_DIR && entryName != "." && entryName != "..") {
        walkBare(directory.get(), entryName.data(), sum);
      } else if (entry->d_type == DT_REG) {
        struct statx info {};
        if (statx(directory.get(), entryName.data(), AT_SYMLINK_NOFOLLOW, STATX_SIZE, &info) != 0) continue;
        sum.bytes += info.stx_size;
        ++sum.files;
      }
    }
  }
}

// The threads take the topmost directories one by one.
FolderMeasure walkBareInThreads(const std::string& folder) {
  std::vector<std::string> top;
  for (const auto& entry : fs::directory_iterator(folder)) top.push_back(entry.path());
  std::atomic<std::size_t> next = 0;
  std::array<FolderMeasure, threads> sums{};
  {
    std::vector<std::jthread> walkers;
    walkers.reserve(sums.size());
    for (auto& sum : sums) {
      walkers.emplace_back([&] {
        FolderMeasure own;
        for (std::size_t i = next++; i < top.size(); i = next++) walkBare(AT_FDCWD, top[i].c_str(), own);
        sum = own;
      });
    }
  }
  return {sums[0].bytes + sums[1].bytes, sums[0].files + sums[1].files};
}

MeasurePool::Settings settings() {
  return {.threads = threads, .maxThreads = threads};
}

FolderMeasure measure(MeasurePool& pool, const std::string& folder) {
  std::promise<FolderMeasure> result;
  pool.measure({FileLocation(folder)}, std::make_shared<std::atomic<bool>>(false),
               [&](std::size_t, const FolderMeasure& found) { result.set_value(found); });
  return result.get_future().get();
}

template <class Walk>
double timed(benchmark::State& state, Walk walk, std::uint64_t expected) {
  FolderMeasure found;
  const double took = secondsOf([&] { found = walk(); });
  if (found.files != expected) state.SkipWithError("a walk misses files");
  return took;
}

double timedDu(benchmark::State& state, const std::string& folder) {
  const std::string command = "du -s --apparent-size " + folder + " >/dev/null";
  int status = 0;
  const double took = secondsOf([&] { status = std::system(command.c_str()); });
  if (status != 0) state.SkipWithError("du failed");
  return took;
}

// All three in turn over the same tree as one folder, which is the hardest to share. The time of an iteration
// is that of our walk.
void measureTree(benchmark::State& state) {
  const std::string folder = Trees::made().nested();
  MeasurePool pool(settings());
  const auto ours = [&] { return measure(pool, folder); };
  const auto bare = [&] { return walkBareInThreads(folder); };
  timed(state, ours, Trees::files);
  timed(state, bare, Trees::files);
  std::vector<double> oursToBare;
  std::vector<double> duToOurs;
  std::vector<double> bareTimes;
  std::vector<double> duTimes;
  while (state.KeepRunning()) {
    bareTimes.push_back(timed(state, bare, Trees::files));
    const double took = timed(state, ours, Trees::files);
    duTimes.push_back(timedDu(state, folder));
    oursToBare.push_back(took / bareTimes.back());
    duToOurs.push_back(duTimes.back() / took);
    state.SetIterationTime(took);
  }
  state.counters["bareMs"] = median(bareTimes) * 1e3;
  state.counters["duMs"] = median(duTimes) * 1e3;
  state.counters["ratio"] = median(oursToBare);
  state.counters["duRatio"] = median(duToOurs);
  if (median(oursToBare) > walkBudget) state.SkipWithError("over budget against the bare walker");
  if (median(duToOurs) < duBudget) state.SkipWithError("over budget against du");
}
BENCHMARK(measureTree)->Iterations(15)->UseManualTime()->Unit(benchmark::kMillisecond);

// The same tree as 400 folders at once.
void measureManyFolders(benchmark::State& state) {
  std::vector<FileLocation> folders;
  for (const auto& top : fs::directory_iterator(Trees::made().nested())) {
    for (const auto& folder : fs::directory_iterator(top)) folders.emplace_back(folder.path());
  }
  MeasurePool pool(settings());
  for (auto _ : state) {
    std::promise<void> all;
    std::atomic<std::size_t> done = 0;
    std::atomic<std::uint64_t> files = 0;
    pool.measure(folders, std::make_shared<std::atomic<bool>>(false),
                 [&](std::size_t, const FolderMeasure& found) {
                   files += found.files;
                   if (++done == folders.size()) all.set_value();
                 });
    all.get_future().wait();
    if (files != Trees::files) state.SkipWithError("a walk misses files");
  }
}
BENCHMARK(measureManyFolders)->Iterations(10)->UseRealTime()->Unit(benchmark::kMillisecond);

// From cancelling to the end of the last walker, in the middle of one huge directory. The worst time counts.
void cancelInHugeDirectory(benchmark::State& state) {
  const FileLocation folder(Trees::made().flat());
  MeasurePool pool(settings());
  double worst = 0;
  while (state.KeepRunning()) {
    const auto flag = std::make_shared<std::atomic<bool>>(false);
    std::promise<FolderMeasure> result;
    pool.measure({folder}, flag, [&](std::size_t, const FolderMeasure& found) { result.set_value(found); });
    std::this_thread::sleep_for(std::chrono::milliseconds(30));
    FolderMeasure found;
    const double took = secondsOf([&] {
      *flag = true;
      found = result.get_future().get();
    });
    if (found.files == 0 || found.files >= Trees::flatFiles) {
      state.SkipWithError("the measurement wasn't running");
    }
    worst = std::max(worst, took);
    state.SetIterationTime(took);
  }
  state.counters["worstMs"] = worst * 1e3;
  if (worst > cancelBudget) state.SkipWithError("over budget");
}
BENCHMARK(cancelInHugeDirectory)->Iterations(30)->UseManualTime()->Unit(benchmark::kMillisecond);

// In KiB; absent fields are 0.
double statusField(std::string_view key) {
  std::ifstream status("/proc/self/status");
  std::string word;
  double value = 0;
  while (status >> word) {
    if (word == key) status >> value;
  }
  return value;
}

// How much the memory rises while 300,000 files are measured, in many directories (0) or in one (1).
void memoryOfMeasure(benchmark::State& state) {
  const std::string folder = state.range(0) != 0 ? Trees::made().flat() : Trees::made().nested();
  MeasurePool pool(settings());
  // Starts the threads.
  measure(pool, Trees::made().nested() + "/0/0");
  double rise = 0;
  for (auto _ : state) {
    // Resets the peak.
    std::ofstream("/proc/self/clear_refs") << "5\n";
    const double before = statusField("VmRSS:");
    measure(pool, folder);
    rise = std::max(rise, statusField("VmHWM:") - before);
  }
  state.counters["riseKiB"] = rise;
  if (rise > 1024) state.SkipWithError("the memory isn't flat");
}
BENCHMARK(memoryOfMeasure)->Arg(0)->Arg(1)->Iterations(3)->UseRealTime()->Unit(benchmark::kMillisecond);

FolderItems listOf(int count) {
  std::vector<FolderItem> listed;
  listed.reserve(static_cast<std::size_t>(count));
  for (int i = 0; i < count; ++i) {
    listed.push_back({.url = FileLocation("/home/someone/some folder/entry " + std::to_string(i)),
                      .sizeBytes = {},
                      .childCount = {},
                      .isDirectory = true});
  }
  return FolderItems(std::move(listed));
}

// The main thread's part of a result; in the second variant a view holds the previous list.
void resultInLongList(benchmark::State& state) {
  const auto count = static_cast<int>(state.range(0));
  FolderItems items = listOf(count);
  FolderItems shown;
  std::uint32_t rank = 0;
  for (auto _ : state) {
    if (rank == items.size()) {
      state.PauseTiming();
      items = listOf(count);
      rank = 0;
      state.ResumeTiming();
    }
    items.setMeasure(rank, (rank * 7919ULL) % 1000003 + 1, 3);
    ++rank;
    if (state.range(1) != 0) shown = items;
    benchmark::DoNotOptimize(items[items.size() / 2]);
  }
}
BENCHMARK(resultInLongList)->Args({100000, 0})->Args({100000, 1})->Unit(benchmark::kMicrosecond);

void makingLongList(benchmark::State& state) {
  for (auto _ : state) benchmark::DoNotOptimize(listOf(100000));
}
BENCHMARK(makingLongList)->Unit(benchmark::kMillisecond);

}  // namespace
