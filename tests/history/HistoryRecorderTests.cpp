#include <gmock/gmock.h>

#include "SampleDay.h"
#include "history/DailySummaryJson.h"
#include "history/HistoryRecorder.h"
#include "platform/linux/time/LinuxCalendar.h"
#include "support/Providers.h"

namespace kestrune {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Key;
using testing::SizeIs;

constexpr Date midnight{799977600};  // 2026-05-09T00:00:00Z
constexpr double day = 86400;
constexpr const char* fileName = "2026-05-09.json";

constexpr double hour = 3600;

class HistoryRecorderTest : public testing::Test, public test::ScriptedPlatform {
 protected:
  HistoryRecorderTest() { clock.setWall(midnight + (10 * hour + 30)); }

  void begin() { beginIn(calendar); }
  void beginIn(platform::Calendar& userCalendar) {
    files.emplace(historyFolder, userCalendar);
    recorder = std::make_shared<HistoryRecorder>(
        loop, HistoryRecorder::Services{.calendar = userCalendar, .facts = systemFacts, .files = *files});
    recorder->start(sources);
    settle();
  }
  // Sets what the network provider shows.
  void connect(std::optional<std::string> ssid, const std::string& label) const {
    NetworkSnapshot snapshot = *sources.network->current;
    snapshot.ssid = std::move(ssid);
    snapshot.interfaceName = label;
    sources.network->current.set(snapshot);
  }
  void showUsage(double percent) const { sources.cpu->current.set({.usagePercent = percent}); }
  // What is printed while time passes.
  std::string printedDuring(Duration time) {
    testing::internal::CaptureStdout();
    advance(time);
    return testing::internal::GetCapturedStdout();
  }
  std::optional<DailySummary> onFile(const std::string& name) { return decodeDay(historyFolder.files[name]); }
  std::vector<std::int64_t> hours() const {
    std::vector<std::int64_t> hours;
    for (const auto& bucket : recorder->current.hours) hours.push_back(bucket.hour);
    return hours;
  }
  std::int64_t ticks() const {
    std::int64_t ticks = 0;
    for (const auto& bucket : recorder->current.hours) ticks += bucket.cpu.count;
    return ticks;
  }

  std::optional<DayFiles> files;
  HistoryRecorder::Sources sources = [this] {
    const test::Providers all(*this);
    return HistoryRecorder::Sources{all.cpu, all.memory, all.battery, all.network, all.disk};
  }();
  std::shared_ptr<HistoryRecorder> recorder;
};

TEST_F(HistoryRecorderTest, ticksEveryMinuteAndSavesAtEveryTenth) {
  begin();
  EXPECT_EQ(recorder->current, (DailySummary{.date = midnight}));
  advance(60s - 1ns);
  EXPECT_THAT(hours(), IsEmpty());
  advance(1ns);
  EXPECT_THAT(hours(), ElementsAre(10));
  advance(9min - 1ns);
  EXPECT_EQ(ticks(), 9);
  EXPECT_EQ(historyFolder.writes, 0);
  advance(1ns);
  EXPECT_THAT(historyFolder.files, ElementsAre(Key(fileName)));
  EXPECT_EQ(onFile(fileName), recorder->current);
  advance(50min);
  EXPECT_THAT(hours(), ElementsAre(10, 11));
  EXPECT_EQ(recorder->current.hours[0].cpu.count, 59) << "10:01:30 to 10:59:30";
  EXPECT_EQ(historyFolder.writes, 6);
}

TEST_F(HistoryRecorderTest, foldsWhatTheProvidersShow) {
  begin();
  const Date began = clock.now();
  sources.cpu->current.set({.usagePercent = 40,
                            .topProcesses = {{.name = "a", .cpuPercent = 7, .memoryBytes = 100},
                                             {.name = "b", .cpuPercent = 5, .memoryBytes = 50},
                                             {.name = "a", .cpuPercent = 1, .memoryBytes = 10}}});
  sources.memory->current.set({.usedBytes = 3ULL << 29U});
  sources.battery->current.set({.percent = 80, .healthPercent = 97});
  sources.network->current.set(
      {.uploadBytesPerSec = 2.5, .downloadBytesPerSec = 100, .ssid = "Home", .interfaceName = "Wi-Fi"});
  sources.disk->current.set({.readBytesPerSec = 7,
                             .writeBytesPerSec = 9,
                             .volumeTotalBytes = 1000,
                             .volumeUsedBytes = 600,
                             .volumeFreeBytes = 400});
  advance(1min);
  showUsage(40);
  sources.battery->current.set({.percent = 79, .healthPercent = 96});
  advance(1min);

  const DailySummary& record = recorder->current;
  ASSERT_THAT(record.hours, SizeIs(1));
  EXPECT_EQ(record.hours[0],
            (HourBucket{.hour = 10,
                        .cpu = {.sum = 80, .count = 2, .peak = 40, .peakTime = began + 60},
                        .memoryGB = {.sum = 3, .count = 2, .peak = 1.5, .peakTime = began + 60},
                        .batteryPercent = {.sum = 159, .count = 2, .peak = 80, .peakTime = began + 60},
                        .networkUpBytes = 300,
                        .networkDownBytes = 12000,
                        .diskReadBytes = 840,
                        .diskWriteBytes = 1080}));
  EXPECT_EQ(record.processes, (std::map<std::string, HistoricProcess>{
                                  {"a", {.name = "a", .cpuSum = 8, .cpuCount = 2, .memorySum = 110}},
                                  {"b", {.name = "b", .cpuSum = 5, .cpuCount = 1, .memorySum = 50}}}));
  EXPECT_EQ(record.networkSSIDs,
            (std::map<std::string, NetworkSSIDStat>{{"Home", {.uploadBytes = 300, .downloadBytes = 12000}}}));
  EXPECT_THAT((std::array{record.diskTotalBytes, record.diskUsedBytes, record.diskFreeBytes}),
              ElementsAre(1000, 600, 400));
  EXPECT_EQ(record.batteryHealthPercent, 96);
}

TEST_F(HistoryRecorderTest, trafficCountsForTheNetworkOrKindOfConnection) {
  begin();
  sources.network->current.set({.uploadBytesPerSec = 1, .downloadBytesPerSec = 2});
  const std::vector<std::tuple<std::optional<std::string>, std::string, std::string>> cases = {
      {"Home", "Wi-Fi", "Home"},
      {std::nullopt, "Wi-Fi", "Wi-Fi"},
      {std::nullopt, "Ethernet", "Ethernet"},
      {"Caf\u00e9", "VPN", "Caf\u00e9"},
      {"", "Wi-Fi", ""}};
  for (const auto& [ssid, label, name] : cases) {
    connect(ssid, label);
    advance(1min);
    EXPECT_EQ(recorder->current.networkSSIDs[name], (NetworkSSIDStat{60, 120})) << label;
  }
  for (const auto* label : {"Not connected", "Detecting\u2026", "VPN", "ethernet", ""}) {
    connect(std::nullopt, label);
    advance(1min);
  }
  EXPECT_THAT(recorder->current.networkSSIDs, SizeIs(cases.size()));
  EXPECT_EQ(recorder->current.totalNetworkUpBytes(), 600) << "the hour counts it all";
}

TEST_F(HistoryRecorderTest, continuesTheRecordOfAnEarlierRun) {
  DailySummary earlier{.date = midnight};
  earlier.hours = {{.hour = 10, .cpu = {.sum = 5, .count = 5}},
                   {.hour = 9, .cpu = {.sum = 9, .count = 9}},
                   {.hour = 10, .cpu = {.sum = 300, .count = 3, .peak = 200, .peakTime = midnight}}};
  earlier.processes["a"] = {.name = "a", .cpuSum = 1, .cpuCount = 17, .memorySum = 1};
  historyFolder.files[fileName] = encodeDay(earlier).text;
  begin();
  EXPECT_EQ(recorder->current, earlier);
  showUsage(50);
  advance(2min);
  EXPECT_EQ(historyFolder.writes, 0);
  advance(1min);
  EXPECT_EQ(historyFolder.writes, 1) << "17 ticks were on file";
  EXPECT_THAT(hours(), ElementsAre(10, 9, 10));
  EXPECT_EQ(recorder->current.hours[0].cpu.count, 5) << "only the last entry continues";
  EXPECT_EQ(recorder->current.hours[2].cpu,
            (BucketStat{.sum = 450, .count = 6, .peak = 200, .peakTime = midnight}));
  EXPECT_EQ(recorder->current.processes.at("a").cpuCount, 17);
}

TEST_F(HistoryRecorderTest, nextSaveReplacesADamagedRecord) {
  std::string damaged = encodeDay(test::sampleDay(midnight)).text;
  damaged.pop_back();
  historyFolder.files[fileName] = damaged;
  begin();
  EXPECT_EQ(recorder->current, (DailySummary{.date = midnight}));
  advance(9min);
  EXPECT_EQ(historyFolder.files[fileName], damaged);
  EXPECT_EQ(printedDuring(1min), "");
  EXPECT_EQ(onFile(fileName), recorder->current);
}

TEST_F(HistoryRecorderTest, midnightStartsANewRecord) {
  clock.setWall(midnight + (24 * hour - 150));
  begin();
  sources.network->current.set({.uploadBytesPerSec = 10, .interfaceName = "Ethernet"});
  advance(2min);
  const DailySummary last = recorder->current;
  EXPECT_EQ(historyFolder.writes, 0);
  advance(1min);
  EXPECT_EQ(historyFolder.writes, 1) << "the new record isn't saved at its first tick";
  EXPECT_EQ(onFile(fileName), last);
  EXPECT_EQ(recorder->current.date, midnight + day);
  EXPECT_THAT(hours(), ElementsAre(0));
  EXPECT_EQ(recorder->current.hours[0].networkUpBytes, 600) << "the whole minute belongs to the new day";
  EXPECT_EQ(recorder->current.networkSSIDs["Ethernet"].uploadBytes, 600);
  advance(9min);
  EXPECT_EQ(onFile("2026-05-10.json"), recorder->current);
  EXPECT_EQ(onFile(fileName), last);
}

TEST_F(HistoryRecorderTest, daysAsleepLeaveNoFile) {
  begin();
  advance(3min);
  clock.setWall(midnight + (4 * day + 7 * hour));
  advance(1min);
  EXPECT_EQ(onFile(fileName)->hours[0].cpu.count, 3);
  EXPECT_EQ(recorder->current.date, midnight + 4 * day);
  EXPECT_THAT(hours(), ElementsAre(7));
  EXPECT_THAT(historyFolder.files, SizeIs(1));
}

TEST_F(HistoryRecorderTest, settingTheClockBackKeepsTheRecord) {
  begin();
  advance(3min);
  clock.setWall(midnight + (22 * hour - 2 * day));
  advance(1min);
  EXPECT_EQ(recorder->current.date, midnight);
  EXPECT_THAT(hours(), ElementsAre(10, 22));
  EXPECT_EQ(historyFolder.writes, 0);
  clock.setWall(midnight + 10.5 * hour);
  advance(1min);
  EXPECT_THAT(hours(), ElementsAre(10, 22, 10)) << "an hour can appear twice";
  EXPECT_EQ(ticks(), 5);
}

TEST_F(HistoryRecorderTest, dayWithoutMidnightStartsAfterTheJump) {
  setenv("TZ", "America/Sao_Paulo", 1);
  platform::LinuxCalendar saoPaulo;
  const Date jump{1541300400 - unixTimeOfReferenceDate};  // 01:00 on the 4th of November 2018
  clock.setWall(jump + -90);
  beginIn(saoPaulo);
  advance(1min);
  EXPECT_THAT(hours(), ElementsAre(23));
  advance(1min);
  EXPECT_THAT(hours(), ElementsAre(1));
  EXPECT_EQ(recorder->current.date, jump);
  recorder->save(recorder->current);
  EXPECT_THAT(historyFolder.files, ElementsAre(Key("2018-11-03.json"), Key("2018-11-04.json")));
  unsetenv("TZ");
}

TEST_F(HistoryRecorderTest, reportsEachFailedSaveAndContinues) {
  historyFolder.failure = "No space left on device";
  begin();
  EXPECT_EQ(printedDuring(29min),
            "[HistoryRecorder] save failed: No space left on device\n"
            "[HistoryRecorder] save failed: No space left on device\n");
  EXPECT_EQ(historyFolder.writes, 2) << "no retry";
  historyFolder.failure.reset();
  advance(1min);
  EXPECT_EQ(onFile(fileName), recorder->current);
  EXPECT_EQ(ticks(), 30);

  historyFolder.failure = "Input/output error";
  clock.setWall(midnight + day);
  EXPECT_EQ(printedDuring(1min), "[HistoryRecorder] save failed: Input/output error\n");
  EXPECT_EQ(recorder->current.date, midnight + day) << "the new day begins regardless";
}

TEST_F(HistoryRecorderTest, loopEndsWithTheRecorder) {
  begin();
  const std::weak_ptr<CPUProvider> cpu = sources.cpu;
  recorder.reset();
  sources = {};
  advance(1h);
  EXPECT_EQ(historyFolder.writes, 0);
  EXPECT_TRUE(cpu.expired()) << "the loop released the providers";
  EXPECT_FALSE(loop.nextDeadline());
}

}  // namespace
}  // namespace kestrune
