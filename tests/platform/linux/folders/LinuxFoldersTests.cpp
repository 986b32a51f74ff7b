#include <climits>
#include <functional>
#include <memory>
#include <set>

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
    return folders.contents(FileLocation(path), skipsHidden).value();
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

  std::set<std::string> kinds;
  for (const auto& entry : list(tree.path())) {
    kinds.insert(std::string(entry.location.name()) + (entry.isDirectory ? "/" : "") +
                 (entry.isLink ? "@" : "") + (entry.size ? " " + std::to_string(*entry.size) : ""));
  }
  EXPECT_EQ(kinds, (std::set<std::string>{"dangling@", "directory/", "fifo", "file 1234", "socket",
                                          "to-directory@"}));
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

TEST_F(ListingTest, permissionsLimitWhatIsListedAndMeasured) {
  tree.file("open/file", 1);
  for (const auto& [name, mode] : {std::pair("closed", 0000), {"namesOnly", 0444}, {"passOnly", 0111}}) {
    tree.file(std::string(name) + "/sub/file", 100);
    tree.file(std::string(name) + "/file", 10);
    chmod((tree / name).c_str(), static_cast<mode_t>(mode));
  }
  chmod(tree.path().c_str(), 0755);
  EXPECT_TRUE(holdsUnprivileged([&] { return test::measured(tree.path()) == FolderMeasure{1, 1}; }));
  for (const char* name : {"closed", "namesOnly", "passOnly"}) {
    EXPECT_TRUE(holdsUnprivileged([&] { return test::measured(tree / name) == FolderMeasure{}; })) << name;
  }
  const auto contents = [&](const char* name) { return folders.contents(FileLocation(tree / name), true); };
  EXPECT_TRUE(holdsUnprivileged([&] { return !contents("closed") && !contents("passOnly"); }));
  EXPECT_TRUE(holdsUnprivileged([&] {
    const auto entries = contents("namesOnly");
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
  for (const auto& [file, content] :
       {std::pair(".flatpak-info", "[Application]\n"),
        {"run/.containerenv", ""},
        {"proc/self/exe", "/snap/kestrune/3/bin/kestrune"},
        {"proc/self/ns/pid", "pid:[4026532333]"},
        {"proc/self/mountinfo", "30 27 254:1 / /home rw - ext4 /dev/vdb rw\n"}}) {
    Machine machine;
    machine.environment.variables["SNAP"] = "/snap/kestrune/3";
    ASSERT_TRUE(machine.seesEverything());
    if (std::filesystem::is_symlink(machine.root / file)) {
      machine.root.link(file, content);
    } else {
      machine.root.write(file, content);
    }
    EXPECT_FALSE(machine.seesEverything()) << file;
  }
}

}  // namespace
}  // namespace kestrune::platform
