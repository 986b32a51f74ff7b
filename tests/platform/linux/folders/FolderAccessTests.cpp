#include <filesystem>
#include <functional>

#include <gmock/gmock.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "platform/linux/folders/FolderTree.h"
#include "platform/linux/folders/LinuxFolders.h"
#include "support/ScriptedPlatform.h"

namespace kestrune::platform {
namespace {

namespace fs = std::filesystem;
using test::measured;

// Whether it holds for a user without privileges, in a process of its own where this one has them.
bool holdsWithoutPrivileges(const std::function<bool()>& check) {
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
  ~FolderAccessTest() override {
    for (const auto* name : {"closed", "namesOnly", "passOnly"}) chmod((tree / name).c_str(), 0755);
  }

  test::FolderTree tree;
  test::ScriptedEnvironment environment;
};

TEST_F(FolderAccessTest, whatMayNotBeReadIsLeftOut) {
  EXPECT_TRUE(holdsWithoutPrivileges([&] { return measured(tree.path()) == FolderMeasure{1, 1}; }));
  EXPECT_TRUE(holdsWithoutPrivileges([&] { return measured(tree / "closed") == FolderMeasure{}; }));
  EXPECT_TRUE(holdsWithoutPrivileges([&] { return measured(tree / "namesOnly") == FolderMeasure{}; }));
}

TEST_F(FolderAccessTest, aListingFailsWhereNamesMayNotBeReadAndElseTellsWhatItCan) {
  LinuxFolders folders(environment);
  const auto fails = [&](const std::string& name) {
    return !folders.contents(FileLocation(tree / name), true).has_value();
  };
  EXPECT_TRUE(holdsWithoutPrivileges([&] { return fails("closed") && fails("passOnly"); }));
  EXPECT_TRUE(holdsWithoutPrivileges([&] {
    const auto entries = folders.contents(FileLocation(tree / "namesOnly"), true);
    if (!entries || entries->size() != 2) return false;
    for (const auto& entry : *entries) {
      if (entry.size || entry.isLink) return false;
      if (entry.isDirectory != (entry.location.name() == "sub")) return false;
    }
    return true;
  }));
}

}  // namespace
}  // namespace kestrune::platform
