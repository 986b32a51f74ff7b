#include <atomic>
#include <condition_variable>
#include <future>
#include <latch>
#include <memory>
#include <mutex>
#include <numeric>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "runtime/Arrivals.h"
#include "runtime/Task.h"
#include "support/TestClock.h"

namespace kestrune {
namespace {

using testing::ElementsAre;

// Blocks the test's thread until the loop is woken.
class BlockingWaker final : public LoopWaker {
 public:
  void wake() override {
    const std::lock_guard lock(mutex_);
    woken_ = true;
    changed_.notify_one();
  }
  void setDeadline(std::optional<ContinuousTime>) override {}
  void acknowledge() override {
    const std::lock_guard lock(mutex_);
    woken_ = false;
  }
  void wait() {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [this] { return woken_; });
  }

 private:
  std::mutex mutex_;
  std::condition_variable changed_;
  bool woken_ = false;
};

class ThreadTest : public testing::Test {
 protected:
  test::TestClock clock;
  BlockingWaker waker;
  std::unique_ptr<MainLoop> loop = std::make_unique<MainLoop>(clock, waker);

  template <class Condition>
  void runUntil(Condition condition) {
    while (!condition()) {
      waker.wait();
      loop->run();
    }
  }
};

std::shared_ptr<ThreadLane> makeLane(std::string name = "lane") {
  return std::make_shared<ThreadLane>(std::move(name), nullptr);
}

TEST_F(ThreadTest, laneKeepsOrderAndNeverOverlaps) {
  std::vector<int> order;  // unguarded: the lane is one thread
  std::vector<std::string> prepared;
  std::promise<void> done;
  {
    ThreadLane lane("walks", [&](const std::string& name) { prepared.push_back(name); });
    std::vector<std::thread> submitters;
    submitters.reserve(4);
    for (int i = 0; i < 4; ++i) {
      submitters.emplace_back([&, i] {
        for (int j = 0; j < 100; ++j) lane.submit([&, i] { order.push_back(i); });
      });
    }
    for (auto& submitter : submitters) submitter.join();
    lane.submit([&] { done.set_value(); });
    done.get_future().wait();
  }
  EXPECT_EQ(order.size(), 400U);
  EXPECT_THAT(prepared, ElementsAre("walks"));
}

TEST_F(ThreadTest, severalThreadsGetPastHungWork) {
  std::promise<void> release;
  const auto released = release.get_future().share();
  std::atomic<int> done = 0;
  ThreadLane lane("several", {}, 3);
  std::latch bothHang(2);
  for (int i = 0; i < 2; ++i) {
    lane.submit([&] {
      bothHang.count_down();
      released.wait();
      ++done;
    });
  }
  bothHang.wait();
  std::promise<void> passed;
  lane.submit([&] { passed.set_value(); });
  passed.get_future().wait();
  EXPECT_EQ(done, 0);
  release.set_value();
}

TEST_F(ThreadTest, destroyedLaneFinishesRunningWorkOnly) {
  auto lane = makeLane();
  std::latch begun(1);
  std::latch release(1);
  std::atomic<bool> finished = false;
  const auto dropped = std::make_shared<std::atomic<bool>>(false);
  lane->submit([&] {
    begun.count_down();
    release.wait();
    finished = true;
  });
  lane->submit([dropped] { *dropped = true; });
  begun.wait();
  std::thread releaser([&] { release.count_down(); });
  lane.reset();
  EXPECT_TRUE(finished);
  EXPECT_FALSE(*dropped);
  EXPECT_EQ(dropped.use_count(), 1);
  releaser.join();
  EXPECT_NO_THROW(makeLane().reset());  // one that never worked
}

TEST_F(ThreadTest, destroyedWorkMaySubmitMore) {
  const auto lane = makeLane();
  std::promise<void> done;
  std::shared_ptr<void> last(nullptr, [&](void*) { lane->submit([&] { done.set_value(); }); });
  lane->submit([last = std::move(last)] {});
  done.get_future().wait();
}

Task takeAll(MainLoop&, std::shared_ptr<Arrivals<int>> arrivals, std::size_t expected,
             std::shared_ptr<std::vector<int>> taken) {
  while (taken->size() < expected) {
    const std::vector<int> batch = co_await arrivals->take();
    EXPECT_FALSE(batch.empty());
    taken->insert(taken->end(), batch.begin(), batch.end());
  }
}

TEST_F(ThreadTest, arrivalsKeepEachThreadsOrder) {
  const auto arrivals = std::make_shared<Arrivals<int>>(*loop);
  const auto taken = std::make_shared<std::vector<int>>();
  constexpr int each = 5000;
  const Task task = takeAll(*loop, arrivals, 2 * each, taken);
  std::vector<std::thread> senders;
  for (const int sign : {1, -1}) {
    senders.emplace_back([=] {
      for (int i = 1; i <= each; ++i) arrivals->add(sign * i);
    });
  }
  runUntil([&] { return task.isDone(); });
  for (auto& sender : senders) sender.join();
  std::vector<int> positive = *taken;
  std::erase_if(positive, [](int value) { return value < 0; });
  std::vector<int> expected(each);
  std::iota(expected.begin(), expected.end(), 1);
  EXPECT_EQ(positive, expected);
  EXPECT_EQ(taken->size(), 2U * each);
}

TEST_F(ThreadTest, loopMayDieWhileTaskAwaitsArrivals) {
  const auto arrivals = std::make_shared<Arrivals<int>>(*loop);
  const auto taken = std::make_shared<std::vector<int>>();
  const Task task = takeAll(*loop, arrivals, 1, taken);
  loop->run();
  loop.reset();
  arrivals->add(1);
  EXPECT_TRUE(task.isDone());
  EXPECT_TRUE(taken->empty());
}

Task handOutFlag(MainLoop&, std::shared_ptr<CancellationFlag> flag) {
  *flag = co_await cancellationFlag();
}

TEST_F(ThreadTest, cancellationFlagOutlivesTheTask) {
  const auto flag = std::make_shared<CancellationFlag>();
  auto task = handOutFlag(*loop, flag);
  loop->run();
  std::latch hasBegun(1);
  std::thread reader([&, mine = *flag] {
    hasBegun.count_down();
    while (!mine->load()) std::this_thread::yield();
  });
  hasBegun.wait();
  EXPECT_FALSE((*flag)->load());
  task.cancel();
  reader.join();
  task = Task();
  EXPECT_TRUE((*flag)->load());
}

struct Gate {
  std::latch begun{1};
  std::latch release{1};
};

Task gated(MainLoop&, std::shared_ptr<WorkLane> lane, std::shared_ptr<Gate> gate,
           std::shared_ptr<int> witness) {
  const auto work = [gate] {
    gate->begun.count_down();
    gate->release.wait();
    return std::string(100, 'x');
  };
  *witness = static_cast<int>((co_await background(*lane, work)).size());
}

TEST_F(ThreadTest, loopMayDieDuringBackgroundWork) {
  auto lane = makeLane();
  const auto gate = std::make_shared<Gate>();
  const auto witness = std::make_shared<int>(0);
  const Task task = gated(*loop, lane, gate, witness);
  loop->run();
  gate->begun.wait();
  loop.reset();
  EXPECT_TRUE(task.isDone());
  EXPECT_EQ(witness.use_count(), 1);
  gate->release.count_down();
  lane.reset();
  EXPECT_EQ(*witness, 0);
}

// Posting races with the destruction of the loop; later posts are dropped.
TEST_F(ThreadTest, loopMayDieWhileOthersPost) {
  const auto witness = std::make_shared<int>(0);
  std::latch started(2);
  std::atomic<bool> stop = false;
  std::vector<std::thread> posters;
  posters.reserve(2);
  for (int i = 0; i < 2; ++i) {
    posters.emplace_back([&, inbox = loop->inbox()] {
      inbox->post([witness] {});
      started.count_down();
      while (!stop) inbox->post([witness] {});
    });
  }
  started.wait();
  loop.reset();
  stop = true;
  for (auto& poster : posters) poster.join();
  EXPECT_EQ(witness.use_count(), 1);
}

}  // namespace
}  // namespace kestrune
