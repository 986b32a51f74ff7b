#include <array>
#include <filesystem>

#include <gmock/gmock.h>
#include <unistd.h>

#include "platform/linux/processes/LinuxProcessTable.h"
#include "platform/linux/processes/PidStat.h"
#include "support/TemporaryFolder.h"

namespace kestrune::platform {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

struct Fake {
  std::string name = "fake";
  std::string flags = "4194560";
  int user = 0;
  int system = 0;
  int start = 100;
  int pages = 10;
};

std::string statOf(const Fake& fake) {
  const auto field = [](int figure) { return " " + std::to_string(figure); };
  return "77 (" + fake.name + ") S 1 1 1 0 -1 " + fake.flags + " 0 0 0 0" + field(fake.user) +
         field(fake.system) + " 0 0 20 0 1 0" + field(fake.start) + " 1000" + field(fake.pages) + " 1 1\n";
}

class ProcessTableTest : public testing::Test {
 protected:
  void put(int pid, const Fake& fake) { root.write(entry(pid, "stat"), statOf(fake)); }
  void putExe(int pid, const std::string& target) { root.link(entry(pid, "exe"), target); }
  void remove(int pid) { fs::remove_all(root / entry(pid, "")); }
  static std::string entry(int pid, const std::string& file) {
    return "proc/" + std::to_string(pid) + "/" + file;
  }

  std::vector<std::int32_t> pids() {
    std::vector<std::int32_t> pids;
    for (const auto& reading : table.readings()) pids.push_back(reading.pid);
    return pids;
  }
  ProcessReading reading(int pid) {
    const auto readings = table.readings();
    const auto found = std::ranges::find(readings, pid, &ProcessReading::pid);
    return found == readings.end() ? ProcessReading{.name = "gone", .executablePath = "gone"} : *found;
  }
  std::string pathOf(int pid) { return reading(pid).executablePath; }

  test::TemporaryFolder root;
  LinuxProcessTable table{root.path()};
};

TEST_F(ProcessTableTest, listsReadableProcessesAndNothingElse) {
  EXPECT_THAT(pids(), IsEmpty()) << "no /proc";
  for (const int pid : {1, 42, 31337}) put(pid, {});
  for (const char* other : {"self/stat", "0/stat", "-5/stat", "12x/stat", "99999999999/stat"}) {
    root.write("proc/" + std::string(other), "");
  }
  root.write(entry(8, "stat"), "8 (cut) S 1 1");
  root.write(entry(9, "status"), "");
  EXPECT_THAT(pids(), UnorderedElementsAre(1, 42, 31337));
  remove(42);
  EXPECT_THAT(pids(), UnorderedElementsAre(1, 31337));
}

TEST_F(ProcessTableTest, figuresAreBytesAndNanoseconds) {
  put(7, {.user = 3, .system = 250, .pages = 5});
  const auto tick = static_cast<std::uint64_t>(1'000'000'000 / sysconf(_SC_CLK_TCK));
  EXPECT_EQ(reading(7).userNanoseconds, 3 * tick);
  EXPECT_EQ(reading(7).systemNanoseconds, 250 * tick);
  EXPECT_EQ(reading(7).residentBytes, 5U * static_cast<std::uint64_t>(sysconf(_SC_PAGESIZE)));
}

TEST_F(ProcessTableTest, completesATruncatedName) {
  put(5, {.name = "gnome-terminal-"});
  putExe(5, "/usr/libexec/gnome-terminal-server (deleted)");
  EXPECT_EQ(reading(5).name, "gnome-terminal-server");
  put(6, {.name = "networkd-dispat"});
  putExe(6, "/usr/bin/python3.11");
  root.write(entry(6, "cmdline"), std::string_view("python3\0-O\0/usr/bin/networkd-dispatcher\0", 40));
  EXPECT_EQ(reading(6).name, "networkd-dispatcher");
  put(7, {.name = "fourteen-bytes"});
  putExe(7, "/usr/bin/fourteen-bytes-and-more");
  EXPECT_EQ(reading(7).name, "fourteen-bytes") << "not truncated";
}

TEST_F(ProcessTableTest, keepsThePathUntilTheProcessIsAnother) {
  put(9, {.name = "shell"});
  putExe(9, "/bin/shell");
  EXPECT_EQ(pathOf(9), "/bin/shell");
  putExe(9, "/bin/moved (deleted)");
  EXPECT_EQ(pathOf(9), "/bin/shell") << "not read again";
  put(9, {.name = "shell", .user = 50, .pages = 99});
  EXPECT_EQ(pathOf(9), "/bin/shell") << "figures may change";

  put(9, {.name = "editor"});
  putExe(9, "/bin/editor");
  EXPECT_EQ(pathOf(9), "/bin/editor") << "it runs another program";
  put(9, {.name = "editor", .start = 200});
  putExe(9, "/opt/editor");
  EXPECT_EQ(pathOf(9), "/opt/editor") << "the id was used again";

  remove(9);
  EXPECT_EQ(pathOf(9), "gone");
  put(9, {.name = "editor", .start = 200});
  EXPECT_EQ(pathOf(9), "") << "nothing is kept of a process that ended";
}

TEST_F(ProcessTableTest, readsNoPathOfAKernelThreadAndRetriesForANewProcess) {
  put(2, {.name = "kworker/0:1-ev", .flags = "2129984"});
  putExe(2, "/never/read");
  EXPECT_EQ(pathOf(2), "");
  put(3, {.name = "new"});
  EXPECT_EQ(pathOf(3), "");
  putExe(3, "/bin/new");
  EXPECT_EQ(pathOf(3), "/bin/new");
  fs::remove(root / entry(3, "exe"));
  put(3, {.name = "new", .pages = 0});
  EXPECT_EQ(pathOf(3), "/bin/new");
}

TEST_F(ProcessTableTest, leavesOutAPathOf1024BytesOrMore) {
  const std::string longest = "/" + std::string(1022, 'x');
  put(4, {});
  putExe(4, longest);
  EXPECT_EQ(pathOf(4), longest);
  put(5, {});
  putExe(5, longest + "x");
  EXPECT_EQ(pathOf(5), "");
}

TEST(PidStat, findsTheEndOfAnyName) {
  for (const std::string name : {"bash", ") S 1 (", "a b", "line\nbreak", "caf\xE9", "", "(((", "x) R 9"}) {
    const std::string text = statOf({.name = name, .user = 150, .system = 75, .start = 42, .pages = 321});
    const auto stat = parsePidStat(text);
    ASSERT_TRUE(stat) << name;
    EXPECT_EQ(stat->name, name);
    EXPECT_THAT((std::array{stat->userTicks, stat->systemTicks, stat->startTime, stat->residentPages}),
                ElementsAre(150, 75, 42, 321));
    EXPECT_FALSE(stat->isKernelThread);
  }
}

TEST(PidStat, refusesTruncatedAndInvalidText) {
  const std::string whole = statOf({.pages = 321});
  const auto firstSafe = whole.find(" 321 ") + 5;
  for (std::size_t length = 0; length < whole.size(); ++length) {
    EXPECT_EQ(parsePidStat(whole.substr(0, length)).has_value(), length >= firstSafe) << length;
  }
  for (const char* text :
       {")77 (", "77 bash S 1", "77 (bash) S a b c d e f g h i j k l m n o p q r s t u v w x y"}) {
    EXPECT_FALSE(parsePidStat(text)) << text;
  }
}

}  // namespace
}  // namespace kestrune::platform
