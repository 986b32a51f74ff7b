#include <gmock/gmock.h>

#include "runtime/Polling.h"
#include "support/TestClock.h"

namespace kestrune {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;

using Log = std::shared_ptr<std::vector<std::string>>;

class TaskTest : public testing::Test, public test::TestLoop {
 protected:
  Log log = std::make_shared<std::vector<std::string>>();
};

Task twoSteps(MainLoop&, Log log, Duration pause) {
  log->push_back("begun");
  co_await sleep(pause);
  log->push_back(co_await isCancelled() ? "woken by cancelling" : "slept");
}

TEST_F(TaskTest, startsAtNextTurnAndSleepsOnContinuousClock) {
  const Task task = twoSteps(loop, log, 10s);
  EXPECT_TRUE(log->empty());
  loop.run();
  EXPECT_THAT(*log, ElementsAre("begun"));
  advance(9999ms);
  EXPECT_THAT(*log, ElementsAre("begun"));
  EXPECT_FALSE(task.isDone());
  advance(1ms);
  EXPECT_THAT(*log, ElementsAre("begun", "slept"));
  EXPECT_TRUE(task.isDone());
  EXPECT_EQ(log.use_count(), 1);
}

TEST_F(TaskTest, cancellingEndsSleepEarlyOrPreventsIt) {
  for (const bool sleepsFirst : {true, false}) {
    log->clear();
    const Task task = twoSteps(loop, log, 1h);
    if (sleepsFirst) settle();
    task.cancel();
    task.cancel();
    EXPECT_TRUE(task.isCancelled());
    EXPECT_EQ(log->size(), sleepsFirst ? 1U : 0U) << "not from within the caller";
    settle();
    EXPECT_THAT(*log, ElementsAre("begun", "woken by cancelling"));
    EXPECT_EQ(loop.nextDeadline(), std::nullopt);
  }
}

struct Sampler {
  bool paused = false;
  int ticks = 0;
  Task task;

  void tick() { ++ticks; }
};

class PollingTest : public TaskTest {
 protected:
  std::shared_ptr<Sampler> sampler = std::make_shared<Sampler>();

  void start(Duration interval) {
    startPolling(loop, sampler, sampler->task, interval, [this] { log->push_back("primed"); });
  }
};

TEST_F(PollingTest, ticksAfterEachIntervalAndOnceWhenCancelled) {
  start(2s);
  EXPECT_THAT(*log, ElementsAre("primed"));
  advance(1999ms);
  EXPECT_EQ(sampler->ticks, 0);
  advance(1ms);
  EXPECT_EQ(sampler->ticks, 1);
  advance(20s);
  EXPECT_EQ(sampler->ticks, 11);
  sampler->task.cancel();
  settle();
  EXPECT_TRUE(sampler->task.isDone());
  advance(1h);
  EXPECT_EQ(sampler->ticks, 12);
}

TEST_F(PollingTest, pausedLoopDoesNotTick) {
  sampler->paused = true;
  start(2s);
  advance(7s);
  EXPECT_EQ(sampler->ticks, 0);
  sampler->paused = false;
  advance(1s);  // in step with the periods that passed
  EXPECT_EQ(sampler->ticks, 1);
  sampler->paused = true;
  sampler->task.cancel();
  settle();
  EXPECT_EQ(sampler->ticks, 1);
}

TEST_F(PollingTest, restartCancelsTheOldLoop) {
  start(2s);
  advance(1s);
  const Task old = sampler->task;
  start(5s);
  settle();
  EXPECT_TRUE(old.isDone());
  EXPECT_EQ(std::exchange(sampler->ticks, 0), 1);  // the old loop's last
  advance(4999ms);
  EXPECT_EQ(sampler->ticks, 0);
  advance(10s);
  EXPECT_EQ(sampler->ticks, 2);
}

TEST_F(PollingTest, loopOutlivesItsSubject) {
  start(2s);
  const Task task = sampler->task;
  advance(1s);
  sampler.reset();
  advance(1min);
  EXPECT_FALSE(task.isDone());
  EXPECT_EQ(loop.nextDeadline(), clock.continuousNow() + 1s);
  task.cancel();
  settle();
  EXPECT_TRUE(task.isDone());
}

TEST_F(PollingTest, ticksOnceAfterSuspend) {
  start(1s);
  advance(10s);
  clock.setContinuous(clock.continuousNow() + 1h);
  settle();
  EXPECT_EQ(sampler->ticks, 11);
  advance(1s);
  EXPECT_EQ(sampler->ticks, 12);
}

Task compute(MainLoop&, std::shared_ptr<WorkLane> lane, Log log, int input) {
  const auto work = [input] { return std::make_unique<int>(input * input); };
  const auto result = co_await background(*lane, work);
  log->push_back(std::to_string(*result));
}

TEST_F(TaskTest, backgroundWorkReturnsItsValue) {
  holdsLane = true;
  const Task task = compute(loop, lane, log, 7);
  compute(loop, lane, log, 8);
  settle();
  EXPECT_EQ(lane->waiting(), 2U);
  task.cancel();  // lets the work that was begun come back
  settle();
  EXPECT_TRUE(log->empty());
  lane->run();
  EXPECT_TRUE(log->empty());  // only on the loop
  settle();
  EXPECT_THAT(*log, ElementsAre("49", "64"));
}

Task holding(MainLoop&, std::shared_ptr<WorkLane> lane, std::shared_ptr<int> witness, int how) {
  const auto work = [] { return 1; };
  if (how == 1) co_await sleep(1h);
  if (how == 2) co_await background(*lane, work);
  if (how == 3) co_await yieldToLoop();
  *witness = 1;
}

// Whether somebody still holds a handle or nobody does.
TEST(TaskAtTheEnd, suspendedTasksDieWithTheLoop) {
  for (const bool keepsHandles : {true, false}) {
    const auto witness = std::make_shared<int>(0);
    const auto lane = std::make_shared<test::ManualLane>();
    std::vector<Task> tasks;
    {
      test::TestLoop owner;
      for (int how = 1; how <= 3; ++how) tasks.push_back(holding(owner.loop, lane, witness, how));
      owner.loop.run();
      tasks.push_back(holding(owner.loop, lane, witness, 0));  // not begun
      if (!keepsHandles) tasks.clear();
      EXPECT_EQ(witness.use_count(), 5);
    }
    EXPECT_EQ(witness.use_count(), 1);
    for (const Task& task : tasks) {
      EXPECT_TRUE(task.isDone());
      task.cancel();
    }
    EXPECT_TRUE(lane->run());  // the work that was under way comes to nothing
    EXPECT_EQ(*witness, 0);
  }
}

struct CancelsAtItsEnd {
  Task other;
  ~CancelsAtItsEnd() { other.cancel(); }
};
Task watching(MainLoop&, std::shared_ptr<CancelsAtItsEnd>) {
  co_await sleep(2h);
}

TEST(TaskAtTheEnd, dyingTaskMayCancelOthers) {
  const auto witness = std::make_shared<int>(0);
  const auto lane = std::make_shared<test::ManualLane>();
  {
    test::TestLoop owner;
    for (const auto pause : {1, 2}) {
      auto guard = std::make_shared<CancelsAtItsEnd>();
      guard->other = holding(owner.loop, lane, witness, pause);
      watching(owner.loop, std::move(guard));
    }
    owner.loop.run();
    EXPECT_EQ(witness.use_count(), 3);
  }
  EXPECT_EQ(witness.use_count(), 1);
  EXPECT_EQ(*witness, 0);
}

}  // namespace
}  // namespace kestrune
