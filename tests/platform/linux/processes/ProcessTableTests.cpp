#include <ctime>
#include <filesystem>

#include <gmock/gmock.h>
#include <unistd.h>

#include "platform/linux/processes/LinuxProcessTable.h"
#include "support/TemporaryFolder.h"

namespace kestrune::platform {
namespace {

namespace fs = std::filesystem;
using testing::Contains;
using testing::UnorderedElementsAre;

struct Fake {
  std::string name = "fake";
  std::string state = "S";
  std::string flags = "4194560";
  int user = 0;
  int system = 0;
  int start = 100;
  int pages = 10;
};

class ProcessTableTest : public testing::Test {
 protected:
  void put(int pid, const Fake& process) {
    std::string text = std::to_string(pid) + " (" + process.name + ") " + process.state + " 1 1 1 0 -1 ";
    text += process.flags + " 0 0 0 0 " + std::to_string(process.user) + " " + std::to_string(process.system);
    text += " 0 0 20 0 1 0 " + std::to_string(process.start) + " 1000 " + std::to_string(process.pages) +
            " 1 1\n";
    root.write(entry(pid, "stat"), text);
  }
  void putExe(int pid, const std::string& target) {
    fs::remove(root / entry(pid, "exe"));
    fs::create_directories(root / entry(pid, ""));
    fs::create_symlink(target, root / entry(pid, "exe"));
  }
  void remove(int pid) { fs::remove_all(root / entry(pid, "")); }
  static std::string entry(int pid, const std::string& file) {
    return "proc/" + std::to_string(pid) + "/" + file;
  }

  std::vector<std::int32_t> walk() {
    std::vector<std::int32_t> pids(static_cast<std::size_t>(std::max(table.processCount(), 0)) + 32);
    pids.resize(static_cast<std::size_t>(std::max(table.listPids(pids), 0)));
    return pids;
  }
  std::string pathOf(int pid) { return table.taskInfo(pid) ? table.executablePath(pid) : "gone"; }
  std::string nameOf(int pid) { return table.taskInfo(pid) ? table.name(pid) : "gone"; }

  test::TemporaryFolder root;
  LinuxProcessTable table{root.path()};
};

TEST_F(ProcessTableTest, listsProcessesAndNothingElse) {
  EXPECT_LT(table.processCount(), 1) << "no /proc";
  std::array<std::int32_t, 2> few{};
  EXPECT_LT(table.listPids(few), 1);

  for (const int pid : {1, 42, 31337}) put(pid, {});
  for (const char* other : {"self/stat", "0/stat", "-5/stat", "12x/stat", "99999999999/stat"}) {
    root.write("proc/" + std::string(other), "");
  }
  EXPECT_THAT(walk(), UnorderedElementsAre(1, 42, 31337));
  EXPECT_EQ(table.listPids(few), 2) << "as many as fit";

  EXPECT_EQ(table.processCount(), 3);
  put(50, {});
  std::array<std::int32_t, 8> pids{};
  EXPECT_EQ(table.listPids(pids), 3) << "the list that was counted";
  EXPECT_EQ(table.listPids(pids), 4) << "only once";
}

TEST_F(ProcessTableTest, tellsFiguresInBytesAndNanoseconds) {
  put(7, {.user = 3, .system = 250, .pages = 5});
  walk();
  const auto info = table.taskInfo(7);
  ASSERT_TRUE(info);
  const auto tick = static_cast<std::uint64_t>(1'000'000'000 / sysconf(_SC_CLK_TCK));
  EXPECT_EQ(info->userNanoseconds, 3 * tick);
  EXPECT_EQ(info->systemNanoseconds, 250 * tick);
  EXPECT_EQ(info->residentBytes, 5U * static_cast<std::uint64_t>(sysconf(_SC_PAGESIZE)));
}

TEST_F(ProcessTableTest, aVanishedOrGarbledProcessIsAbsent) {
  put(7, {});
  root.write(entry(8, "stat"), "8 (cut) S 1 1");
  walk();
  remove(7);
  EXPECT_FALSE(table.taskInfo(7));
  EXPECT_FALSE(table.taskInfo(8));
}

TEST_F(ProcessTableTest, completesANameThatWasCut) {
  put(5, {.name = "gnome-terminal-"});
  putExe(5, "/usr/libexec/gnome-terminal-server (deleted)");
  EXPECT_EQ(nameOf(5), "gnome-terminal-server");
  put(6, {.name = "networkd-dispat"});
  putExe(6, "/usr/bin/python3.11");
  root.write(entry(6, "cmdline"), std::string_view("python3\0/usr/bin/networkd-dispatcher\0", 37));
  EXPECT_EQ(nameOf(6), "networkd-dispatcher");
  put(7, {.name = "fourteen-bytes"});
  putExe(7, "/usr/bin/fourteen-bytes-and-more");
  EXPECT_EQ(nameOf(7), "fourteen-bytes") << "not cut";
}

TEST_F(ProcessTableTest, keepsThePathUntilTheProcessIsAnother) {
  const auto pathAfterWalk = [this] {
    walk();
    return pathOf(9);
  };
  put(9, {.name = "shell"});
  putExe(9, "/bin/shell");
  EXPECT_EQ(pathAfterWalk(), "/bin/shell");

  putExe(9, "/bin/moved (deleted)");
  EXPECT_EQ(pathAfterWalk(), "/bin/shell") << "not asked again";
  put(9, {.name = "shell", .user = 50, .pages = 99});
  EXPECT_EQ(pathAfterWalk(), "/bin/shell") << "figures may change";

  put(9, {.name = "editor"});
  putExe(9, "/bin/editor");
  EXPECT_EQ(pathAfterWalk(), "/bin/editor") << "it runs another program";

  put(9, {.name = "editor", .start = 200});
  putExe(9, "/opt/editor");
  EXPECT_EQ(pathAfterWalk(), "/opt/editor") << "the id was used again";
}

TEST_F(ProcessTableTest, asksNoKernelThreadForAPathButAnUnreadyProcessAgain) {
  put(2, {.name = "kworker/0:1-ev", .flags = "2129984"});
  putExe(2, "/never/asked");
  EXPECT_EQ(pathOf(2), "");
  put(3, {.name = "new"});
  EXPECT_EQ(pathOf(3), "");
  putExe(3, "/bin/new");
  EXPECT_EQ(pathOf(3), "/bin/new");
  fs::remove(root / entry(3, "exe"));
  put(3, {.name = "new", .state = "Z", .pages = 0});
  EXPECT_EQ(pathOf(3), "/bin/new");
}

TEST(ProcessTableOfThisMachine, knowsThisProcess) {
  LinuxProcessTable table;
  const std::int32_t self = getpid();
  std::vector<std::int32_t> pids(static_cast<std::size_t>(table.processCount()) + 32);
  pids.resize(static_cast<std::size_t>(table.listPids(pids)));
  EXPECT_THAT(pids, Contains(self));

  const auto before = table.taskInfo(self);
  ASSERT_TRUE(before);
  EXPECT_EQ(table.name(self), "platform_linux_tests") << "longer than the kernel's 15 bytes";
  EXPECT_EQ(table.executablePath(self), fs::read_symlink("/proc/self/exe").string());
  EXPECT_GT(before->residentBytes, 500'000U);

  timespec used{};
  do {
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &used);
  } while (used.tv_sec == 0 && used.tv_nsec < 100'000'000);
  const auto after = table.taskInfo(self);
  ASSERT_TRUE(after);
  const auto total = after->userNanoseconds + after->systemNanoseconds;
  EXPECT_GE(total, 80'000'000U);
  EXPECT_LT(total, 600'000'000'000U);
}

}  // namespace
}  // namespace kestrune::platform
