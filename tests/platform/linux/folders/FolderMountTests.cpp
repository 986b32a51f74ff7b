#include <fstream>
#include <future>
#include <string>

#include <fcntl.h>
#include <gmock/gmock.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/wait.h>
#include <unistd.h>

#include "platform/linux/folders/FolderTree.h"
#include "platform/linux/folders/LinuxFolders.h"
#include "platform/linux/folders/MeasurePool.h"
#include "support/LeaveMachine.h"
#include "support/ScriptedPlatform.h"

namespace kestrune::platform {
namespace {

using namespace std::chrono_literals;
using test::measured;

class FolderMountTest : public testing::Test {
 protected:
  void SetUp() override {
    if (!test::hasLeftMachine()) GTEST_SKIP() << "the kernel grants no mounts of its own";
  }
  // False: the kernel doesn't grant it.
  bool mountAt(const std::string& name, const char* type, const std::string& source, unsigned long flags = 0,
               const std::string& options = {}) {
    tree.directory(name);
    return mounts_.add(tree / name, type, source, flags, options);
  }

  test::FolderTree tree;

 private:
  test::Mounts mounts_;
};

TEST_F(FolderMountTest, kernelFileSystemsCountAsNothing) {
  for (const auto* path : {"/proc", "/proc/self/fdinfo", "/sys", "/dev/pts"}) {
    EXPECT_EQ(measured(path), FolderMeasure{}) << path;
  }
  tree.file("file", 1);
  ASSERT_TRUE(mountAt("proc", nullptr, "/proc", MS_BIND | MS_REC));
  ASSERT_TRUE(mountAt("part-of-sys", nullptr, "/sys/kernel", MS_BIND | MS_REC));
  EXPECT_EQ(measured(tree.path()), (FolderMeasure{1, 1}));
}

TEST_F(FolderMountTest, entersOtherFileSystems) {
  tree.file("file", 1);
  ASSERT_TRUE(mountAt("memory", "tmpfs", "tmpfs"));
  tree.file("memory/sub/file", 10);
  ASSERT_TRUE(mountAt("memory/inner", "tmpfs", "tmpfs"));
  tree.file("memory/inner/file", 100);
  EXPECT_EQ(measured(tree.path()), (FolderMeasure{111, 3}));
  EXPECT_EQ(measured(tree / "memory"), (FolderMeasure{110, 2}));
}

TEST_F(FolderMountTest, sumsSaturate) {
  ASSERT_TRUE(mountAt("memory", "tmpfs", "tmpfs"));
  constexpr std::int64_t largest = std::numeric_limits<std::int64_t>::max();
  for (const auto* name : {"memory/a/file", "memory/b/file", "memory/c/file"}) {
    tree.file(name, 0);
    ASSERT_EQ(truncate((tree / name).c_str(), largest), 0);
  }
  EXPECT_EQ(measured(tree / "memory/a"), (FolderMeasure{static_cast<std::uint64_t>(largest), 1}));
  EXPECT_EQ(measured(tree.path()), (FolderMeasure{std::numeric_limits<std::uint64_t>::max(), 3}));
}

// Each mount doubles the number of paths through the tree.
TEST_F(FolderMountTest, entersEachBindMountOnce) {
  tree.file("top/file", 1);
  constexpr int doublings = 10;
  for (int i = 0; i < doublings; ++i) {
    ASSERT_TRUE(mountAt("top/" + std::to_string(i), nullptr, tree / "top", MS_BIND | MS_REC));
  }
  test::DrivenWalk driven;
  auto walk = driven.walk(FileLocation(tree / "top"));
  EXPECT_EQ(test::finished(walk), (FolderMeasure{1, 1}));
  EXPECT_EQ(driven.entries, doublings + 1U);
}

TEST_F(FolderMountTest, aHungFileSystemDelaysNothingElse) {
  tree.file("fine/file", 5);
  // Nobody answers for this file system, as if its server were gone.
  UniqueFd server(open("/dev/fuse", O_RDWR | O_CLOEXEC));
  const std::string options = "fd=" + std::to_string(server.get()) + ",rootmode=40000,user_id=0,group_id=0";
  if (!server || !mountAt("hung", "fuse", "nobody", MS_NODEV | MS_NOSUID, options)) {
    GTEST_SKIP() << "the kernel grants no FUSE mount";
  }
  test::ScriptedEnvironment environment;
  LinuxFolders folders(environment);
  const auto listing = folders.contents(FileLocation(tree.path()), true);
  ASSERT_TRUE(listing);
  EXPECT_EQ(listing->size(), 2U);

  MeasurePool pool({.threads = 1, .maxThreads = 3, .stallTimeout = 20ms});
  const auto measure = [&](const std::string& name) {
    const auto result = std::make_shared<std::promise<FolderMeasure>>();
    pool.measure({FileLocation(tree / name)}, std::make_shared<std::atomic<bool>>(false),
                 [=](std::size_t, const FolderMeasure& found) { result->set_value(found); });
    return result->get_future();
  };
  auto hung = measure("hung");
  EXPECT_EQ(measure("fine").get(), (FolderMeasure{5, 1}));
  EXPECT_EQ(hung.wait_for(0s), std::future_status::timeout);
  server = UniqueFd();
  EXPECT_EQ(hung.get(), FolderMeasure{});
}

}  // namespace
}  // namespace kestrune::platform
