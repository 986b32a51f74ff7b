#include <climits>
#include <map>
#include <memory>

#include <dirent.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>

#include "platform/linux/folders/FolderTree.h"
#include "platform/linux/folders/LinuxFolders.h"
#include "support/ScriptedPlatform.h"

namespace kestrune::platform {
namespace {

namespace fs = std::filesystem;

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

// A machine below a root of its own, without a sandbox.
class Machine {
 public:
  Machine() {
    root.write("proc/self/mountinfo", "27 1 254:0 /@ / rw - btrfs /dev/vda rw\n");
    link("proc/self/ns/pid", "pid:[4026531836]");
    link("proc/self/exe", "/usr/bin/kestrune");
  }
  void link(const std::string& name, const std::string& target) const {
    const fs::path path = root / name;
    fs::create_directories(path.parent_path());
    fs::remove(path);
    fs::create_symlink(target, path);
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
  fs::remove_all(machine.root / "proc");
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
      machine.link(file, target);
    }
    EXPECT_FALSE(machine.seesEverything()) << file;
  }
}

}  // namespace
}  // namespace kestrune::platform
