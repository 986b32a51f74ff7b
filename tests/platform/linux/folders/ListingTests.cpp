#include <algorithm>
#include <climits>
#include <filesystem>
#include <memory>

#include <dirent.h>
#include <gmock/gmock.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

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
  // The entry of the tree at that path.
  DirectoryEntry entry(const std::string& path) {
    const auto all = list(tree.path(), false);
    const auto found = std::ranges::find(all, FileLocation(path), &DirectoryEntry::location);
    EXPECT_NE(found, all.end()) << path;
    return found == all.end() ? DirectoryEntry() : *found;
  }

  test::FolderTree tree;
  test::ScriptedEnvironment environment;
  LinuxFolders folders{environment};
};

TEST_F(ListingTest, tellsKindsAndSizesAndFollowsNothing) {
  tree.file("file", 1234);
  tree.directory("directory");
  tree.link("to-directory", tree / "directory");
  tree.link("dangling", "/nowhere");
  ASSERT_EQ(mkfifo((tree / "fifo").c_str(), 0600), 0);
  const UniqueFd socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  (tree / "socket").copy(address.sun_path, sizeof address.sun_path - 1);
  ASSERT_EQ(bind(socket.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);

  EXPECT_EQ(entry(tree / "file").size, 1234);
  EXPECT_TRUE(entry(tree / "directory").isDirectory);
  EXPECT_EQ(entry(tree / "directory").size, std::nullopt);
  for (const char* link : {"to-directory", "dangling"}) {
    EXPECT_TRUE(entry(tree / link).isLink) << link;
    EXPECT_FALSE(entry(tree / link).isDirectory) << link;
  }
  for (const char* other : {"fifo", "socket"}) {
    EXPECT_FALSE(entry(tree / other).isLink || entry(tree / other).isDirectory) << other;
    EXPECT_EQ(entry(tree / other).size, std::nullopt) << other;
  }
}

TEST_F(ListingTest, keepsTheFileSystemsOrderAndEveryByteOfTheNames) {
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
  EXPECT_EQ(list(tree.path(), false).size(), odd.size() + 1) << "with what is hidden";
}

TEST_F(ListingTest, failedIsNotEmpty) {
  tree.directory("empty");
  tree.file("file", 1);
  EXPECT_TRUE(list(tree / "empty").empty());
  EXPECT_EQ(folders.contents(FileLocation(tree / "missing"), true), std::nullopt);
  EXPECT_EQ(folders.contents(FileLocation(tree / "file"), true), std::nullopt);
  const std::string endless = "/" + std::string(5000, 'x');
  EXPECT_EQ(folders.contents(FileLocation(endless), true), std::nullopt);
}

TEST_F(ListingTest, pathsMayBeLongerThanTheKernelTakes) {
  const std::string deepest = tree.chain(30, std::string(250, 'd'),
                                         [](int, int directory) { test::makeFile(directory, "file", 10); });
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

class SandboxTest : public testing::Test {
 protected:
  SandboxTest() {
    root.write("proc/self/mountinfo", "27 1 254:0 /@ / rw - btrfs /dev/vda rw\n");
    pointTo("ns/pid", "pid:[4026531836]");
    pointTo("exe", "/usr/bin/kestrune");
  }
  void pointTo(const std::string& link, const std::string& target) const {
    const std::string path = root / "proc/self/" + link;
    std::filesystem::create_directories(std::filesystem::path(path).parent_path());
    std::filesystem::remove(path);
    std::filesystem::create_symlink(target, path);
  }
  bool seesEverything() { return LinuxFolders(environment, root.path()).seesWholeFileSystem(); }

  test::TemporaryFolder root;
  test::ScriptedEnvironment environment;
};

TEST_F(SandboxTest, aPlainDesktopSeesEverything) {
  EXPECT_TRUE(seesEverything());
  environment.variables["SNAP"] = "/snap/terminal/12";
  EXPECT_TRUE(seesEverything()) << "started from a Snap, but not in it";
  std::filesystem::remove_all(root / "proc");
  EXPECT_TRUE(seesEverything()) << "nothing speaks against it";
}

TEST_F(SandboxTest, whatLiesBetweenIsSeen) {
  root.write(".flatpak-info", "[Application]\n");
  EXPECT_FALSE(seesEverything());
  std::filesystem::remove(root / ".flatpak-info");
  root.write("run/.containerenv", "");
  EXPECT_FALSE(seesEverything());
  std::filesystem::remove(root / "run/.containerenv");
  ASSERT_TRUE(seesEverything());

  environment.variables["SNAP"] = "/snap/kestrune/3";
  pointTo("exe", "/snap/kestrune/3/bin/kestrune");
  EXPECT_FALSE(seesEverything());
  pointTo("exe", "/usr/bin/kestrune");
  pointTo("ns/pid", "pid:[4026532333]");
  EXPECT_FALSE(seesEverything());
  pointTo("ns/pid", "pid:[4026531836]");
  root.write("proc/self/mountinfo", "30 27 254:1 / /home rw - ext4 /dev/vdb rw\n");
  EXPECT_FALSE(seesEverything()) << "the root of the process is no mount";
}

}  // namespace
}  // namespace kestrune::platform
