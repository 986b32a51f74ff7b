#include <algorithm>
#include <atomic>
#include <future>
#include <thread>

#include <gtest/gtest.h>

#include "platform/linux/folders/FolderTree.h"
#include "platform/linux/folders/MeasurePool.h"

namespace kestrune::platform {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

// Takes the measures of one request, each of them once.
class Results {
 public:
  explicit Results(std::size_t count) : promises_(count) {}
  Folders::MeasureDone take() {
    return [this](std::size_t index, const FolderMeasure& measure) { promises_[index].set_value(measure); };
  }
  // Waits for it.
  FolderMeasure get(std::size_t index) { return promises_[index].get_future().get(); }

 private:
  std::vector<std::promise<FolderMeasure>> promises_;
};

CancellationFlag neverCancelled() {
  return std::make_shared<std::atomic<bool>>(false);
}

class MeasurePoolTest : public testing::Test {
 protected:
  FolderMeasure measure(MeasurePool& pool, const std::string& path) {
    Results results(1);
    pool.measure({FileLocation(path)}, neverCancelled(), results.take());
    return results.get(0);
  }

  test::FolderTree tree;
};

TEST_F(MeasurePoolTest, measuresEachFolderOnce) {
  std::vector<FileLocation> folders;
  for (int i = 0; i < 300; ++i) {
    tree.file(std::to_string(i) + "/sub/file", static_cast<std::size_t>(i) + 1);
    folders.emplace_back(tree / std::to_string(i));
  }
  MeasurePool pool({.threads = 4, .maxThreads = 4});
  Results first(folders.size());
  Results second(folders.size());
  pool.measure(folders, neverCancelled(), first.take());
  pool.measure(folders, neverCancelled(), second.take());
  pool.measure({}, neverCancelled(), [](std::size_t, const FolderMeasure&) { ADD_FAILURE(); });
  for (std::size_t i = 0; i < folders.size(); ++i) {
    EXPECT_EQ(first.get(i), (FolderMeasure{i + 1, 1}));
    EXPECT_EQ(second.get(i), (FolderMeasure{i + 1, 1}));
  }
}

TEST_F(MeasurePoolTest, cancelledRequestsStopEarlyAndReportAll) {
  std::vector<FileLocation> folders;
  for (int i = 0; i < 50; ++i) {
    for (int j = 0; j < 20; ++j) tree.file(std::to_string(i) + "/" + std::to_string(j) + "/file", 1);
    folders.emplace_back(tree / std::to_string(i));
  }
  const auto flag = std::make_shared<std::atomic<bool>>(false);
  MeasurePool pool({.threads = 2, .maxThreads = 2});
  Results results(folders.size());
  const auto take = results.take();
  std::atomic<int> taken = 0;
  pool.measure(folders, flag, [&](std::size_t index, const FolderMeasure& measure) {
    if (++taken == 10) *flag = true;
    take(index, measure);
  });
  std::vector<FolderMeasure> measures;
  for (std::size_t i = 0; i < folders.size(); ++i) measures.push_back(results.get(i));
  EXPECT_GE(std::ranges::count(measures, FolderMeasure{20, 20}), 10);
  EXPECT_EQ(measures[49], FolderMeasure{});
  EXPECT_EQ(measure(pool, folders[49].path()), (FolderMeasure{20, 20})) << "other requests continue";
}

TEST_F(MeasurePoolTest, copesWithConcurrentChanges) {
  constexpr std::uint64_t lasting = 200;
  for (std::uint64_t i = 0; i < lasting; ++i)
    tree.file("lasting/" + std::to_string(i % 20) + "/" + std::to_string(i), 1);
  std::atomic<bool> isOver = false;
  std::thread disturber([&] {
    for (int i = 0; !isOver; ++i) {
      const std::string name = "passing" + std::to_string(i % 10);
      tree.file(name + "/sub/file", 1);
      fs::rename(tree / (name + "/sub"), tree / (name + "/moved"));
      fs::remove_all(tree / name);
    }
  });
  MeasurePool pool({.threads = 3, .maxThreads = 3});
  for (int round = 0; round < 100; ++round) {
    const FolderMeasure found = measure(pool, tree.path());
    EXPECT_GE(found.files, lasting);
    EXPECT_LE(found.files, lasting + 20) << "each of ten may be seen before and after a change";
  }
  isOver = true;
  disturber.join();
}

TEST_F(MeasurePoolTest, replacesStalledThreadsUntilTheyRecover) {
  tree.file("a/file", 1);
  tree.file("b/file", 2);
  MeasurePool pool({.threads = 1, .maxThreads = 3, .stallTimeout = 5ms});
  std::promise<void> release;
  std::promise<void> isStalled;
  pool.measure({FileLocation(tree / "a")}, neverCancelled(), [&](std::size_t, const FolderMeasure&) {
    isStalled.set_value();
    release.get_future().wait();
  });
  isStalled.get_future().wait();
  for (int i = 0; i < 3; ++i) EXPECT_EQ(measure(pool, tree / "b"), (FolderMeasure{2, 1}));
  release.set_value();
  for (int i = 0; i < 20; ++i) EXPECT_EQ(measure(pool, tree / "a"), (FolderMeasure{1, 1}));
}

TEST_F(MeasurePoolTest, mayBeDestroyedAtAnyTime) {
  for (int i = 0; i < 100; ++i) tree.file(std::to_string(i) + "/sub/file", 1);
  const std::size_t descriptors = test::openDescriptors();
  for (int round = 0; round < 30; ++round) {
    Results results(1000);
    MeasurePool pool({.threads = 3, .maxThreads = 3});
    pool.measure(std::vector(1000, FileLocation(tree.path())), neverCancelled(), results.take());
    if (round % 3 > 0) results.get(1);
  }
  EXPECT_EQ(test::openDescriptors(), descriptors);
}

}  // namespace
}  // namespace kestrune::platform
