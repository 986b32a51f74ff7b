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

  void wake() override { ++wakes; }
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
