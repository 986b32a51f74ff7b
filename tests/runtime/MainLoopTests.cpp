#include <algorithm>
#include <array>

#include <gmock/gmock.h>

#include "support/TestClock.h"

namespace kestrune {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;

class RecordingWaker final : public LoopWaker {
 public:
  int wakes = 0;
  std::optional<ContinuousTime> deadline;
  Duration timerLeeway{};

  void wake() override { ++wakes; }
  Duration leeway() const override { return timerLeeway; }
  void setDeadline(std::optional<ContinuousTime> next) override { deadline = next; }
  void acknowledge() override { wakes = 0; }
};

class MainLoopTest : public testing::Test {
 protected:
  test::TestClock clock;
  RecordingWaker waker;
  std::unique_ptr<MainLoop> loop = std::make_unique<MainLoop>(clock, waker);
  std::vector<std::string> ran;

  Job note(const std::string& what) {
    return [this, what] { ran.push_back(what); };
  }
  void pass(Duration duration) {
    clock.setContinuous(clock.continuousNow() + duration);
    loop->run();
  }
};

TEST_F(MainLoopTest, jobsAddedByJobsRunNextTurn) {
  loop->post([this] {
    ran.emplace_back("first");
    loop->post(note("added"));
  });
  loop->post(note("second"));
  EXPECT_EQ(waker.wakes, 1);
  loop->run();
  EXPECT_THAT(ran, ElementsAre("first", "second"));
  EXPECT_TRUE(loop->hasJobs());
  EXPECT_EQ(waker.wakes, 1);
  loop->run();
  EXPECT_THAT(ran, ElementsAre("first", "second", "added"));
  EXPECT_FALSE(loop->hasJobs());
  EXPECT_EQ(waker.wakes, 0);
}

TEST_F(MainLoopTest, timersFireByDeadlineThenBySetting) {
  loop->after(20ms, note("late"));
  loop->after(10ms, note("first of two"));
  EXPECT_EQ(waker.deadline, clock.continuousNow() + 10ms);
  loop->after(10ms, note("second of two"));
  loop->after(5ms, note("early"));
  EXPECT_EQ(waker.deadline, clock.continuousNow() + 5ms);
  pass(4ms);
  EXPECT_TRUE(ran.empty());
  pass(1ms);
  EXPECT_THAT(ran, ElementsAre("early"));
  EXPECT_EQ(waker.deadline, loop->nextDeadline());
  pass(1h);
  EXPECT_THAT(ran, ElementsAre("early", "first of two", "second of two", "late"));
  EXPECT_EQ(waker.deadline, std::nullopt);
}

// Ticks once per interval, and each tick takes a while.
void tickForEver(MainLoop& loop, test::TestClock& clock, Duration interval, int& ticks) {
  loop.after(interval, [&loop, &clock, interval, &ticks] {
    ++ticks;
    clock.setContinuous(clock.continuousNow() + 2ms);
    tickForEver(loop, clock, interval, ticks);
  });
}

TEST_F(MainLoopTest, leewayKeepsLoopsInStep) {
  waker.timerLeeway = 20ms;
  std::array<int, 5> ticks{};
  for (std::size_t i = 0; i < ticks.size(); ++i) {
    tickForEver(*loop, clock, std::array{1s, 2s, 1s, 3s, 1s}.at(i), ticks.at(i));
  }
  int wakes = 0;
  for (const ContinuousTime end = clock.continuousNow() + 1h; *waker.deadline < end; ++wakes) {
    clock.setContinuous(std::max(*waker.deadline, clock.continuousNow()));
    loop->run();
  }
  EXPECT_EQ(wakes, ticks.front()) << "every wake ticks the fast loops, and no loop wakes on its own";
  EXPECT_NEAR(ticks.front(), 3600, 40);
  EXPECT_NEAR(ticks.at(3), 1200, 14);
}

TEST_F(MainLoopTest, shortTimersHaveLittleLeeway) {
  waker.timerLeeway = 20ms;
  loop->after(10ms, note("short"));
  pass(8ms);
  EXPECT_TRUE(ran.empty());
  pass(1ms);
  EXPECT_THAT(ran, ElementsAre("short"));
}

TEST_F(MainLoopTest, neverStarvesTheDriver) {
  int turns = 0;
  std::function<void()> again = [&] {
    ++turns;
    loop->post(again);
  };
  std::function<void()> rearm = [&] {
    ++turns;
    loop->after(0ms, rearm);
  };
  loop->post(again);
  loop->after(0ms, rearm);
  loop->run();
  EXPECT_EQ(turns, 2);
  EXPECT_EQ(waker.deadline, clock.continuousNow());
  loop->run();
  EXPECT_EQ(turns, 4);
}

TEST_F(MainLoopTest, timersMayCancelTimers) {
  const auto first = loop->after(10ms, note("cancelled"));
  MainLoop::TimerId victim;
  loop->after(20ms, [&] { EXPECT_TRUE(loop->cancelTimer(victim)); });
  victim = loop->after(20ms, note("cancelled"));
  const auto fired = loop->after(20ms, note("fired"));
  EXPECT_TRUE(loop->cancelTimer(first));
  EXPECT_FALSE(loop->cancelTimer(first));
  pass(1s);
  EXPECT_THAT(ran, ElementsAre("fired"));
  EXPECT_FALSE(loop->cancelTimer(fired));
}

TEST_F(MainLoopTest, dropsPendingJobsAtItsEnd) {
  const auto witness = std::make_shared<int>(0);
  const auto hold = [&] { return [witness] {}; };
  const auto inbox = loop->inbox();
  MainLoop* const address = loop.get();
  loop->post(hold());
  loop->after(1s, hold());
  loop->park(hold());
  // What a job holds may use the loop as it goes.
  std::shared_ptr<void> lastWord(nullptr, [&hold, address](void*) {
    address->post(hold());
    address->after(1s, hold());
  });
  loop->after(2s, [keep = std::move(lastWord)] {});
  EXPECT_EQ(witness.use_count(), 4);
  loop.reset();
  EXPECT_EQ(witness.use_count(), 1);
  inbox->post(hold());
  EXPECT_EQ(witness.use_count(), 1);
}

}  // namespace
}  // namespace kestrune
