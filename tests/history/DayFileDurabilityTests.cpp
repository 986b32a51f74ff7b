// Day files on a real file system when the program is killed or the disk fails.
#include <csignal>
#include <random>
#include <thread>

#include <gmock/gmock.h>
#include <sys/prctl.h>
#include <sys/wait.h>

#include "SampleDay.h"
#include "history/DailySummaryJson.h"
#include "history/HistoryRecorder.h"
#include "platform/linux/files/UniqueFd.h"
#include "platform/linux/user/LinuxHistoryFolder.h"
#include "support/LeaveMachine.h"
#include "support/ScriptedPlatform.h"
#include "support/TemporaryFolder.h"

namespace kestrune {
namespace {

namespace fs = std::filesystem;

constexpr Date midnight{799977600};  // 2026-05-09T00:00:00Z
constexpr const char* fileName = "Kestrune/history/2026-05-09.json";

// A record of a busy day, identified by its days of uptime.
DailySummary numberedDay(std::int64_t number) {
  DailySummary day = test::sampleDay(midnight);
  for (int i = 0; i < 400; ++i) {
    const std::string name = "process " + std::to_string(i);
    day.processes[name] = {.name = name, .cpuSum = 1.0 / 3, .cpuCount = number};
  }
  day.uptimeDays = number;
  return day;
}

// Writes records until it is killed; reports the first one through `pipe`.
[[noreturn]] void writeForEver(platform::HistoryFolder& storage, std::int64_t number, int pipe) {
  for (bool isFirst = true;; isFirst = false) {
    storage.write("2026-05-09.json", encodeDay(numberedDay(++number)).text);
    if (isFirst && write(pipe, "!", 1) != 1) _exit(1);
  }
}

class DayFileDurabilityTest : public testing::Test, public test::ScriptedPlatform {
 protected:
  // Returns what the recorder prints when it saves.
  std::string save(const DailySummary& summary) {
    platform::LinuxHistoryFolder storage(data);
    DayFiles files(storage, calendar);
    HistoryRecorder recorder(loop, {.calendar = calendar, .facts = systemFacts, .files = files});
    testing::internal::CaptureStdout();
    recorder.save(summary);
    return testing::internal::GetCapturedStdout();
  }
  std::optional<DailySummary> onFile() const {
    return decodeDay(folder.read("data/" + std::string(fileName)));
  }
  std::ptrdiff_t filesInHistory() const {
    return std::distance(fs::directory_iterator(fs::path(data) / "Kestrune/history"), {});
  }

  test::TemporaryFolder folder;
  const std::string data = folder / "data";
  test::Mounts disk;
};

TEST_F(DayFileDurabilityTest, killedProgramLeavesAWholeFile) {
  platform::LinuxHistoryFolder storage(data);
  ASSERT_EQ(save(numberedDay(0)), "");
  std::mt19937 random(20260509);
  std::uniform_int_distribution<int> microseconds(0, 10000);
  std::int64_t latest = 0;
  for (int round = 0; round < 100; ++round) {
    std::array<int, 2> ends{};
    ASSERT_EQ(pipe(ends.data()), 0);
    const platform::UniqueFd ours(ends[0]);
    platform::UniqueFd theirs(ends[1]);
    const pid_t parent = getpid();
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
      prctl(PR_SET_PDEATHSIG, SIGKILL);
      if (getppid() != parent) _exit(0);
      writeForEver(storage, latest, theirs.get());
    }
    theirs = {};
    char byte = 0;
    EXPECT_EQ(::read(ours.get(), &byte, 1), 1) << "the child failed";
    std::this_thread::sleep_for(std::chrono::microseconds(microseconds(random)));
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);

    const auto day = onFile();
    ASSERT_TRUE(day) << "round " << round;
    ASSERT_EQ(*day, numberedDay(day->uptimeDays));
    ASSERT_GT(day->uptimeDays, latest);
    latest = day->uptimeDays;
  }
  // A process killed between linking a file and renaming it leaves one behind.
  EXPECT_LT(filesInHistory(), 20) << "unnamed files disappear with their process";
}

TEST_F(DayFileDurabilityTest, fullDiskKeepsTheOldFile) {
  fs::create_directory(data);
  if (!disk.add(data, "tmpfs", "tmpfs", 0, "size=256k,mode=0700"))
    GTEST_SKIP() << "the kernel grants no mount";
  ASSERT_EQ(save(numberedDay(1)), "");
  {
    std::ofstream filler(data + "/filler", std::ios::binary);
    while (filler << 'x') continue;
  }
  EXPECT_EQ(save(numberedDay(2)), "[HistoryRecorder] save failed: No space left on device\n");
  EXPECT_EQ(onFile(), numberedDay(1));
  EXPECT_EQ(filesInHistory(), 1) << "no temporary file is left";
  fs::remove(data + "/filler");
  EXPECT_EQ(save(numberedDay(2)), "");
  EXPECT_EQ(onFile(), numberedDay(2));
}

TEST_F(DayFileDurabilityTest, readOnlyDiskKeepsTheOldFile) {
  fs::create_directory(data);
  if (!disk.add(data, "tmpfs", "tmpfs", 0, "size=1m,mode=0700")) GTEST_SKIP() << "the kernel grants no mount";
  ASSERT_EQ(save(numberedDay(1)), "");
  ASSERT_EQ(mount(nullptr, data.c_str(), nullptr, MS_REMOUNT | MS_RDONLY, nullptr), 0);
  EXPECT_EQ(save(numberedDay(2)), "[HistoryRecorder] save failed: Read-only file system\n");
  EXPECT_EQ(onFile(), numberedDay(1));
}

}  // namespace
}  // namespace kestrune
