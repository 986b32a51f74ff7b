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
  EXPECT_THAT(firedAfter(), ElementsAre("cpu-core-pinned")) << "the load may move";
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
  EXPECT_THAT(firedAfter(20), IsEmpty());
  set("alerts.cpu.enabled", true);
  EXPECT_THAT(firedAfter(7), ElementsAre("cpu-core-pinned", "cpu-high")) << "both counted from the start";
}

TEST_F(AlertRulesTest, memoryFiresOnEachChangeOfLevel) {
  using enum Pressure;
  struct Step {
    const char* what;
    const char* threshold;
    Pressure level;
    bool fires;
  };
  setPressure(warning, 12.34);
  EXPECT_THAT(firedAfter(3), ElementsAre("memory-pressure")) << "once for a level";
  EXPECT_EQ(last.body, "12.3 GB used of 16 GB — consider closing unused apps");
  for (const auto& [what, threshold, level, fires] :
       {Step{"up", "warning", critical, true}, Step{"also on the way down", "warning", warning, true},
        Step{"recovered", "warning", nominal, false}, Step{"below the threshold", "critical", warning, false},
        Step{"the level was taken note of", "warning", warning, false},
        Step{"at the threshold", "critical", critical, true}}) {
    set("alerts.memory.threshold", std::string(threshold));
    setPressure(level);
    EXPECT_EQ(firedAfter().size(), fires ? 1U : 0U) << what;
  }
  for (const bool isEnabled : {false, true}) {
    set("alerts.memory.enabled", isEnabled);
    evaluate();
  }
  EXPECT_THAT(fired(), ElementsAre("memory-pressure")) << "switched off it forgets the level";
}

TEST_F(AlertRulesTest, fullDiskFiresHourlyUntilItRecovers) {
  for (const std::int64_t percent : {5, 7, 10, 20, 29}) {
    set("alerts.disk.threshold", percent);
    const std::uint64_t used = (100 - static_cast<std::uint64_t>(percent)) * gigabyte;
    setDisk(100 * gigabyte, used);
    EXPECT_THAT(firedAfter(), IsEmpty()) << "the limit itself is not below it: " << percent;
    setDisk(100 * gigabyte, used + 1);
    EXPECT_THAT(firedAfter(), ElementsAre("disk-low")) << percent;
  }
  set("alerts.disk.threshold", std::int64_t{10});
  setDisk(100, 0);
  evaluate();
  setDisk(1000 * gigabyte, 920 * gigabyte);
  EXPECT_THAT(firedAfter(), ElementsAre("disk-low"));
  EXPECT_EQ(last.body, "8% free — 80.0 GB remaining");
  advance(1h);
  EXPECT_THAT(fired(), IsEmpty()) << "an hour must be over";
  EXPECT_THAT(firedAfter(), ElementsAre("disk-low"));
  setDisk(100, 10);
  evaluate();
  setDisk(100, 95);
  EXPECT_THAT(firedAfter(), ElementsAre("disk-low")) << "armed again by the recovery";
  set("alerts.disk.enabled", false);
  evaluate();
  set("alerts.disk.enabled", true);
  EXPECT_THAT(firedAfter(), ElementsAre("disk-low"));
  setDisk(0, 0);
  EXPECT_THAT(firedAfter(), IsEmpty()) << "an unknown size counts as free";
  set("alerts.disk.threshold", std::int64_t{101});
  EXPECT_THAT(firedAfter(), ElementsAre("disk-low"));
}

TEST_F(AlertRulesTest, trafficFiresOncePerDayAndLimit) {
  setTraffic(4.99);
  set("alerts.network.enabled", true);
  EXPECT_THAT(firedAfter(), IsEmpty());
  setTraffic(6);
  EXPECT_THAT(firedAfter(3), ElementsAre("network-daily"));
  EXPECT_EQ(last.body, "You've used 6.0 GB of data today");
  set("alerts.network.enabled", false);
  evaluate();
  set("alerts.network.enabled", true);
  set("alerts.network.dailyGB", std::int64_t{8});
  EXPECT_THAT(firedAfter(), IsEmpty()) << "neither switched on again nor at a limit not reached";
  setTraffic(8);
  EXPECT_THAT(firedAfter(), ElementsAre("network-daily"));
  set("alerts.network.dailyGB", std::int64_t{5});
  EXPECT_THAT(firedAfter(), IsEmpty()) << "a lower limit is no news";
}

TEST_F(AlertRulesTest, trafficFiresAgainOnTheNextLocalDay) {
  calendar.hoursEast = 5.5;
  set("alerts.network.enabled", true);
  const Date midnight = calendar.startOfDay(clock.now()) + 86400;
  clock.setWall(midnight + -12);
  setTraffic(7);
  EXPECT_THAT(firedAfter(2), ElementsAre("network-daily"));
  EXPECT_THAT(firedAfter(), ElementsAre("network-daily")) << "the record is still that of yesterday";
  EXPECT_THAT(firedAfter(100), IsEmpty());
  recorder->current.hours.clear();
  evaluate();
  setTraffic(7);
  EXPECT_THAT(firedAfter(), IsEmpty()) << "the day's alert is spent";
}

}  // namespace
}  // namespace kestrune
