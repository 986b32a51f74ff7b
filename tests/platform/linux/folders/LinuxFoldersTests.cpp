#include <climits>
#include <functional>
#include <map>
#include <memory>

#include <dirent.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <sys/wait.h>

#include "platform/linux/folders/FolderTree.h"
#include "platform/linux/folders/LinuxFolders.h"
#include "support/ScriptedPlatform.h"

namespace kestrune::platform {
namespace {

class ListingTest : public testing::Test {
 protected:
  std::vector<DirectoryEntry> list(const std::string& path, bool skipsHidden = true) {
    auto entries = folders.contents(FileLocation(path), skipsHidden);
    EXPECT_TRUE(entries);
    return entries ? *std::move(entries) : std::vector<DirectoryEntry>();
  }

  test::FolderTree tree;
  test::ScriptedEnvironment environment;
  LinuxFolders folders{environment};
};

TEST_F(ListingTest, reportsKindsAndSizesAndFollowsNothing) {
  tree.file("file", 1234);
  tree.directory("directory");
  tree.link("to-directory", tree / "directory");
  tree.link("dangling", "/nowhere");
  tree.fifo("fifo");
  const UniqueFd socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
  sockaddr_un address{.sun_family = AF_UNIX, .sun_path = {}};
  (tree / "socket").copy(address.sun_path, sizeof address.sun_path - 1);
  ASSERT_EQ(bind(socket.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);

  std::map<std::string, std::string> kinds;
  for (const auto& entry : list(tree.path())) {
    const std::string size = entry.size ? std::to_string(*entry.size) : "";
    kinds.emplace(entry.location.name(), size + (entry.isDirectory ? "d" : "") + (entry.isLink ? "l" : ""));
  }
  EXPECT_EQ(kinds, (std::map<std::string, std::string>{{"file", "1234"},
                                                       {"directory", "d"},
                                                       {"to-directory", "l"},
                                                       {"dangling", "l"},
                                                       {"fifo", ""},
                                                       {"socket", ""}}));
}

TEST_F(ListingTest, keepsOrderAndBytesOfNames) {
  tree.file(".hidden", 1);
  std::vector<std::string> odd = {"line\nbreak", "\xFF\xFE", std::string(255, 'n'), " ", "-rf",
                                  "tab\t",       "\\"};
  for (int i = 0; i < 2000; ++i) odd.push_back("usual name " + std::to_string(i));
  for (const auto& name : odd) tree.file(name, 1);
  std::vector<std::string> expected;
  const std::unique_ptr<DIR, int (*)(DIR*)> directory(opendir(tree.path().c_str()), closedir);
  while (const dirent* entry = readdir(directory.get())) {
    if (entry->d_name[0] != '.') expected.emplace_back(&entry->d_name[0]);
  }
  std::vector<std::string> listed;
  for (const auto& entry : list(tree.path())) {
    listed.emplace_back(entry.location.name());
    EXPECT_EQ(entry.location.parent().path(), tree.path());
  }
  EXPECT_EQ(listed, expected);
  EXPECT_EQ(listed.size(), odd.size());
  EXPECT_EQ(list(tree.path(), false).size(), odd.size() + 1) << "with the hidden one";
}

TEST_F(ListingTest, failureIsNotEmpty) {
  tree.directory("empty");
  tree.file("file", 1);
  EXPECT_TRUE(list(tree / "empty").empty());
  for (const auto& path : {tree / "missing", tree / "file", "/" + std::string(5000, 'x')}) {
    EXPECT_EQ(folders.contents(FileLocation(path), true), std::nullopt) << path;
  }
}

TEST_F(ListingTest, pathsMayExceedPathMax) {
  const std::string deepest =
      tree.chain(30, std::string(250, 'd'), [](int directory) { test::makeFile(directory, "file", 10); });
  ASSERT_GT(deepest.size(), std::size_t{PATH_MAX} + 3000);
  const auto entries = list(deepest);
  ASSERT_EQ(entries.size(), 1U);
  EXPECT_EQ(entries[0].location.path(), deepest + "/file");
  EXPECT_EQ(entries[0].size, 10);
  EXPECT_EQ(test::measured(deepest), (FolderMeasure{10, 1}));
  EXPECT_EQ(test::measured(tree.path()), (FolderMeasure{300, 30}));
  tree.link("home", tree.path());
  EXPECT_EQ(list((tree / "home") + deepest.substr(tree.path().size())).size(), 1U)
      << "links on the way are followed";
}

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
};

TEST_F(FolderAccessTest, unreadableFoldersCountAsNothing) {
  EXPECT_TRUE(holdsUnprivileged([&] { return test::measured(tree.path()) == FolderMeasure{1, 1}; }));
  EXPECT_TRUE(holdsUnprivileged([&] { return test::measured(tree / "closed") == FolderMeasure{}; }));
  EXPECT_TRUE(holdsUnprivileged([&] { return test::measured(tree / "namesOnly") == FolderMeasure{}; }));
}

TEST_F(FolderAccessTest, listingNeedsReadPermission) {
  test::ScriptedEnvironment environment;
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

// A machine below a root of its own, without a sandbox.
class Machine {
 public:
  Machine() {
    root.write("proc/self/mountinfo", "27 1 254:0 /@ / rw - btrfs /dev/vda rw\n");
    root.link("proc/self/ns/pid", "pid:[4026531836]");
    root.link("proc/self/exe", "/usr/bin/kestrune");
  }
  bool seesEverything() { return LinuxFolders(environment, root.path()).seesWholeFileSystem(); }

  test::TemporaryFolder root;
  test::ScriptedEnvironment environment;
};

TEST(WholeFileSystemTest, isSeenOnAPlainDesktop) {
  Machine machine;
  EXPECT_TRUE(machine.seesEverything());
  machine.environment.variables["SNAP"] = "/snap/terminal/12";
  EXPECT_TRUE(machine.seesEverything()) << "started from a Snap, but not in it";
  std::filesystem::remove_all(machine.root / "proc");
  EXPECT_TRUE(machine.seesEverything()) << "no sign of a sandbox";
}

TEST(WholeFileSystemTest, eachSignOfASandboxHidesIt) {
  struct Sign {
    std::string file;
    std::string content;
    std::string target;  // of a link in place of the file
  };
  for (const auto& [file, content, target] :
       {Sign{".flatpak-info", "[Application]\n", ""}, Sign{"run/.containerenv", "", ""},
        Sign{"proc/self/exe", "", "/snap/kestrune/3/bin/kestrune"},
        Sign{"proc/self/ns/pid", "", "pid:[4026532333]"},
        Sign{"proc/self/mountinfo", "30 27 254:1 / /home rw - ext4 /dev/vdb rw\n", ""}}) {
    Machine machine;
    machine.environment.variables["SNAP"] = "/snap/kestrune/3";
    ASSERT_TRUE(machine.seesEverything());
    if (target.empty()) {
      machine.root.write(file, content);
    } else {
      machine.root.link(file, target);
    }
    EXPECT_FALSE(machine.seesEverything()) << file;
  }
}

}  // namespace
}  // namespace kestrune::platform
