#include <limits>

#include <gmock/gmock.h>

#include "history/DailySummary.h"
#include "history/SystemUptime.h"
#include "support/ScriptedPlatform.h"

namespace kestrune {
namespace {

using testing::ElementsAre;
using testing::Field;
using testing::Key;
using testing::SizeIs;

constexpr Date morning{800000000};

HourBucket hour(double cpuSum, std::int64_t count, double peak) {
  const BucketStat stat{.sum = cpuSum, .count = count, .peak = peak};
  return {.hour = 5, .cpu = stat, .memoryGB = stat, .batteryPercent = stat};
}

TEST(BucketStatTest, keepsTheTimeOfTheFirstOfEqualPeaks) {
  BucketStat stat;
  stat.fold(0, morning);
  EXPECT_EQ(stat, (BucketStat{.sum = 0, .count = 1, .peak = 0, .peakTime = Date::distantPast}));
  for (const double value : {2.0, 7.0, 7.0, 4.0}) stat.fold(value, morning + value + stat.sum);
  EXPECT_EQ(stat, (BucketStat{.sum = 20, .count = 5, .peak = 7, .peakTime = morning + 9}));
  EXPECT_EQ(stat.average(), 4);
  EXPECT_EQ((BucketStat{.sum = 3, .count = 0}).average(), 0);
  EXPECT_EQ((BucketStat{.sum = 3, .count = -1}).average(), 0);
}

TEST(BucketStatDeathTest, overflowEndsTheProcess) {
  BucketStat stat{.count = std::numeric_limits<std::int64_t>::max()};
  EXPECT_DEATH(stat.fold(1, morning), "count");
}

TEST(DailySummaryTest, isZeroWithoutHours) {
  const DailySummary day{.date = morning};
  EXPECT_EQ(day.batteryStartPercent(), 0);
  EXPECT_EQ(day.batteryEndPercent(), 0);
  EXPECT_EQ(day.averageCPU(), 0);
  EXPECT_EQ(day.averageMemoryGB(), 0);
}

TEST(DailySummaryTest, averagesWeighEachHourEqually) {
  DailySummary day;
  day.hours = {hour(180, 60, 90), hour(89.9, 1, 89.9), hour(0, 0, 0)};
  EXPECT_THAT(day.hourlyCPUFractions(), ElementsAre(0.03, 89.9 / 100, 0));
  EXPECT_EQ(day.averageCPU(), (3 + 89.9 + 0) / 3);
  EXPECT_EQ(day.averageMemoryGB(), (3 + 89.9 + 0) / 3);
  EXPECT_EQ(day.peakCPU(), 90);
  EXPECT_EQ(day.peakMemoryGB(), 90);
}

TEST(DailySummaryTest, addsUpTraffic) {
  DailySummary day;
  day.hours = {{.networkUpBytes = 1, .networkDownBytes = 10, .diskReadBytes = 100, .diskWriteBytes = 1000},
               {.networkUpBytes = 2, .networkDownBytes = 20, .diskReadBytes = 200, .diskWriteBytes = 2000}};
  EXPECT_EQ(day.totalNetworkUpBytes(), 3);
  EXPECT_EQ(day.totalNetworkDownBytes(), 30);
  EXPECT_EQ(day.totalDiskReadBytes(), 300);
  EXPECT_EQ(day.totalDiskWriteBytes(), 3000);
  day.networkSSIDs = {{"a", {1, 2}}, {"b", {0, 5}}, {"c", {4, 0}}};
  EXPECT_THAT(day.ssidsByTraffic(), ElementsAre(Key("b"), Key("c"), Key("a")));
}

TEST(DailySummaryTest, batteryFollowsTheOrderOfTheEntries) {
  DailySummary day;
  day.hours = {hour(99.99, 1, 100), hour(5, 1, 5), hour(7.5, 2, 5)};
  day.hours[0].hour = 23;
  day.hours[2].hour = 2;
  EXPECT_EQ(day.batteryStartPercent(), 99);
  EXPECT_EQ(day.batteryEndPercent(), 3);
  day.hours = {hour(-1.9, 1, 0), hour(1e300, 1, 0)};
  EXPECT_EQ(day.batteryStartPercent(), -1);
  EXPECT_EQ(day.batteryEndPercent(), std::numeric_limits<std::int64_t>::max());
}

TEST(DailySummaryTest, listsTheFiveBusiestProcesses) {
  DailySummary day;
  const auto add = [&](const std::string& name, double cpuSum, std::int64_t count) {
    day.processes[name] = {.name = name, .cpuSum = cpuSum, .cpuCount = count};
  };
  add("never", 1000, 0);
  add("seldom", 90, 1);
  add("mostly", 600, 60);
  add("always", 720, 1440);
  add("idle", -1, 1);
  EXPECT_THAT(day.topProcesses(), SizeIs(5));
  add("busy", 40, 2);
  const auto is = [](const char* name) { return Field(&HistoricProcess::name, name); };
  EXPECT_THAT(day.topProcesses(),
              ElementsAre(is("seldom"), is("busy"), is("mostly"), is("always"), is("never")));
}

TEST(SystemUptimeTest, isSplitIntoDaysHoursAndMinutes) {
  test::ScriptedSystemFacts facts;
  const auto uptimeAfter = [&](double seconds) {
    const SystemUptime uptime = systemUptime(facts, {1700000000 - unixTimeOfReferenceDate + seconds});
    return std::tuple(uptime.days, uptime.hours, uptime.minutes);
  };
  facts.boot = 1700000000;
  EXPECT_EQ(uptimeAfter(2 * 86400 + 23 * 3600 + 59 * 60 + 59.9), std::tuple(2, 23, 59));
  EXPECT_EQ(uptimeAfter(59.999), std::tuple(0, 0, 0));
  EXPECT_EQ(uptimeAfter(-86400 * 3), std::tuple(0, 0, 0)) << "a start in the future";
  facts.boot.reset();
  EXPECT_EQ(uptimeAfter(0), std::tuple(19675, 22, 13)) << "counted from 1970 where the start is unknown";
}

}  // namespace
}  // namespace kestrune
