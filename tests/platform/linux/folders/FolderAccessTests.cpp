#include <functional>

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include "platform/linux/folders/FolderTree.h"
#include "platform/linux/folders/LinuxFolders.h"
#include "support/ScriptedPlatform.h"

namespace kestrune::platform {
namespace {

using test::measured;

// Whether it holds for an unprivileged user: in a child process if this one is privileged.
bool holdsUnprivileged(const std::function<bool()>& check) {
  if (geteuid() != 0) return check();
  const pid_t child = fork();
  if (child == 0) {
    constexpr uid_t nobody = 65534;
    const bool isNobody = setresgid(nobody, nobody, nobody) == 0 && setresuid(nobody, nobody, nobody) == 0;
    _exit(isNobody && check() ? 0 : 1);
  }
  int status = -1;
  return waitpid(child, &status, 0) == child && status == 0;
}

class FolderAccessTest : public testing::Test {
 protected:
  FolderAccessTest() {
    tree.file("open/file", 1);
    tree.file("closed/file", 10);
    tree.file("namesOnly/file", 100);
    tree.file("namesOnly/sub/file", 100);
    tree.file("passOnly/file", 1000);
    chmod(tree.path().c_str(), 0755);
    chmod((tree / "closed").c_str(), 0000);
    chmod((tree / "namesOnly").c_str(), 0444);
    chmod((tree / "passOnly").c_str(), 0111);
  }

  test::FolderTree tree;
  test::ScriptedEnvironment environment;
};

TEST_F(FolderAccessTest, unreadableFoldersCountAsNothing) {
  EXPECT_TRUE(holdsUnprivileged([&] { return measured(tree.path()) == FolderMeasure{1, 1}; }));
  EXPECT_TRUE(holdsUnprivileged([&] { return measured(tree / "closed") == FolderMeasure{}; }));
  EXPECT_TRUE(holdsUnprivileged([&] { return measured(tree / "namesOnly") == FolderMeasure{}; }));
}

TEST_F(FolderAccessTest, listingNeedsReadPermission) {
  LinuxFolders folders(environment);
  const auto list = [&](const std::string& name) {
    return folders.contents(FileLocation(tree / name), true);
  };
  EXPECT_TRUE(holdsUnprivileged([&] { return !list("closed") && !list("passOnly"); }));
  EXPECT_TRUE(holdsUnprivileged([&] {
    const auto entries = list("namesOnly");
    return entries && entries->size() == 2 && std::ranges::all_of(*entries, [](const auto& entry) {
             return !entry.size && !entry.isLink && entry.isDirectory == (entry.location.name() == "sub");
           });
  }));
}

}  // namespace
}  // namespace kestrune::platform
