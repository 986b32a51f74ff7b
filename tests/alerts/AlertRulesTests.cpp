#include "AlertsFixture.h"

namespace kestrune {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

// One rule at a time; nothing else is alarming.
class AlertRulesTest : public test::AlertsFixture {
 protected:
  AlertRulesTest() { start(); }
};

TEST_F(AlertRulesTest, highLoadFiresEveryHalfMinute) {
  setCPU(80);
  EXPECT_EQ(evaluationsUntilItFires(), 7) << "first seen after 5 s, and 30 s long";
  EXPECT_THAT(fired(), ElementsAre("cpu-high"));
  EXPECT_EQ(last.body, "CPU above 80% for 30 s (80% now)");
  setCPU(96.4);
  EXPECT_EQ(evaluationsUntilItFires(), 6);
  fired();
  EXPECT_EQ(last.body, "CPU above 80% for 30 s (96% now)");

  evaluate(3);
  setCPU(79.9);
  evaluate();
  setCPU(80);
  EXPECT_EQ(evaluationsUntilItFires(), 7) << "one reading below begins anew";
}

TEST_F(AlertRulesTest, busyCoreFiresAfterTwentySeconds) {
  setCPU(30, {1, 90, 2, 90});
  EXPECT_EQ(evaluationsUntilItFires(), 5);
  EXPECT_THAT(fired(), ElementsAre("cpu-core-pinned"));
  EXPECT_EQ(last.body, "Core 2 at 90% for 20 s — a process may be spinning");
  EXPECT_EQ(evaluationsUntilItFires(), 4);
  fired();
  evaluate(3);
  setCPU(30, {1, 2, 3, 100});
  evaluate();
  EXPECT_THAT(fired(), ElementsAre("cpu-core-pinned")) << "the load may move";
  EXPECT_EQ(last.body, "Core 4 at 100% for 20 s — a process may be spinning");

  for (const auto& calm : {std::vector<double>{89.9, 50}, std::vector<double>{}}) {
    setCPU(30, {95});
    evaluate(4);
    setCPU(30, calm);
    evaluate();
    fired();
    setCPU(30, {95});
    EXPECT_EQ(evaluationsUntilItFires(), 5);
  }
}

TEST_F(AlertRulesTest, oneSwitchCoversBothCpuRules) {
  setCPU(100, {100});
  evaluate(4);
  set("alerts.cpu.enabled", false);
  evaluate(20);
  EXPECT_THAT(fired(), IsEmpty());
  set("alerts.cpu.enabled", true);
  evaluate(7);
  EXPECT_THAT(fired(), ElementsAre("cpu-core-pinned", "cpu-high")) << "both counted from the start";
}

TEST_F(AlertRulesTest, memoryFiresOnEachChangeOfLevel) {
  setPressure(Pressure::warning, 12.34);
  evaluate(3);
  EXPECT_THAT(fired(), ElementsAre("memory-pressure")) << "once for a level";
  EXPECT_EQ(last.body, "12.3 GB used of 16 GB — consider closing unused apps");
  setPressure(Pressure::critical, 15.5);
  evaluate();
  EXPECT_THAT(fired(), ElementsAre("memory-pressure"));
  setPressure(Pressure::warning);
  evaluate();
  EXPECT_THAT(fired(), ElementsAre("memory-pressure")) << "also on the way down";
  setPressure(Pressure::nominal);
  evaluate();
  EXPECT_THAT(fired(), IsEmpty());

  set("alerts.memory.threshold", std::string("critical"));
  setPressure(Pressure::warning);
  evaluate();
  EXPECT_THAT(fired(), IsEmpty());
  set("alerts.memory.threshold", std::string("warning"));
  evaluate();
  EXPECT_THAT(fired(), IsEmpty()) << "the level was taken note of";
  set("alerts.memory.threshold", std::string("critical"));
  setPressure(Pressure::critical);
  evaluate();
  EXPECT_THAT(fired(), ElementsAre("memory-pressure"));
  set("alerts.memory.enabled", false);
  evaluate();
  set("alerts.memory.enabled", true);
  evaluate();
  EXPECT_THAT(fired(), ElementsAre("memory-pressure")) << "switched off it forgets the level";
}

TEST_F(AlertRulesTest, fullDiskFiresHourlyUntilItRecovers) {
  for (const std::int64_t percent : {5, 7, 10, 20, 29}) {
    set("alerts.disk.threshold", percent);
    setDisk(100 * gigabyte, (100 - static_cast<std::uint64_t>(percent)) * gigabyte);
    evaluate();
    EXPECT_THAT(fired(), IsEmpty()) << "the limit itself is not below it: " << percent;
    setDisk(100 * gigabyte, (100 - static_cast<std::uint64_t>(percent)) * gigabyte + 1);
    evaluate();
    EXPECT_THAT(fired(), ElementsAre("disk-low")) << percent;
  }
  set("alerts.disk.threshold", std::int64_t{10});
  setDisk(100, 0);
  evaluate();
  setDisk(1000 * gigabyte, 920 * gigabyte);
  evaluate();
  EXPECT_THAT(fired(), ElementsAre("disk-low"));
  EXPECT_EQ(last.body, "8% free — 80.0 GB remaining");
  advance(1h);
  EXPECT_THAT(fired(), IsEmpty()) << "an hour must be over";
  evaluate();
  EXPECT_THAT(fired(), ElementsAre("disk-low"));
  setDisk(100, 10);
  evaluate();
  setDisk(100, 95);
  evaluate();
  EXPECT_THAT(fired(), ElementsAre("disk-low")) << "armed again by the recovery";
  set("alerts.disk.enabled", false);
  evaluate();
  set("alerts.disk.enabled", true);
  evaluate();
  EXPECT_THAT(fired(), ElementsAre("disk-low"));
  setDisk(0, 0);
  evaluate();
  EXPECT_THAT(fired(), IsEmpty()) << "an unknown size counts as free";
  set("alerts.disk.threshold", std::int64_t{101});
  evaluate();
  EXPECT_THAT(fired(), ElementsAre("disk-low"));
}

TEST_F(AlertRulesTest, trafficFiresOncePerDayAndLimit) {
  setTraffic(4.99);
  set("alerts.network.enabled", true);
  evaluate();
  EXPECT_THAT(fired(), IsEmpty());
  setTraffic(6);
  evaluate(3);
  EXPECT_THAT(fired(), ElementsAre("network-daily"));
  EXPECT_EQ(last.body, "You've used 6.0 GB of data today");
  set("alerts.network.enabled", false);
  evaluate();
  set("alerts.network.enabled", true);
  set("alerts.network.dailyGB", std::int64_t{8});
  evaluate();
  EXPECT_THAT(fired(), IsEmpty()) << "neither switched on again nor at a limit not reached";
  setTraffic(8);
  evaluate();
  EXPECT_THAT(fired(), ElementsAre("network-daily"));
  set("alerts.network.dailyGB", std::int64_t{5});
  evaluate();
  EXPECT_THAT(fired(), IsEmpty()) << "a lower limit is no news";
}

TEST_F(AlertRulesTest, trafficFiresAgainOnTheNextLocalDay) {
  calendar.hoursEast = 5.5;
  set("alerts.network.enabled", true);
  const Date midnight = calendar.startOfDay(clock.now()) + 86400;
  clock.setWall(midnight + -12);
  setTraffic(7);
  evaluate(2);
  EXPECT_THAT(fired(), ElementsAre("network-daily"));
  evaluate();
  EXPECT_THAT(fired(), ElementsAre("network-daily")) << "the record is still that of yesterday";
  evaluate(100);
  EXPECT_THAT(fired(), IsEmpty());
  recorder->current.hours.clear();
  evaluate();
  setTraffic(7);
  evaluate();
  EXPECT_THAT(fired(), IsEmpty()) << "the day's alert is spent";
}

}  // namespace
}  // namespace kestrune
