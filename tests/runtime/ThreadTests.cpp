#include <atomic>
#include <future>
#include <latch>
#include <thread>

#include <gmock/gmock.h>

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
    woken_ = true;
    woken_.notify_one();
  }
  void setDeadline(std::optional<ContinuousTime>) override {}
  void acknowledge() override { woken_ = false; }
  void wait() { woken_.wait(false); }

 private:
  std::atomic<bool> woken_ = false;
};

class ThreadTest : public testing::Test {
 protected:
  test::TestClock clock;
  BlockingWaker waker;
  std::unique_ptr<MainLoop> loop = std::make_unique<MainLoop>(clock, waker);
};

// Runs the same work in some threads; they are joined where the result is destroyed.
std::vector<std::jthread> inThreads(int count, const std::function<void()>& work) {
  std::vector<std::jthread> threads;
  while (count-- > 0) threads.emplace_back(work);
  return threads;
}

std::shared_ptr<ThreadLane> makeLane(std::string name = "lane") {
  return std::make_shared<ThreadLane>(std::move(name), nullptr);
}

// Work that has begun and waits for its release.
struct Gate {
  std::latch begun{1};
  std::latch release{1};

  void pass() {
    begun.count_down();
    release.wait();
  }
};

TEST_F(ThreadTest, laneNeverOverlaps) {
  std::size_t done = 0;  // unguarded: the lane is one thread
  std::vector<std::string> prepared;
  std::latch end(1);
  {
    ThreadLane lane("walks", [&](const std::string& name) { prepared.push_back(name); });
    inThreads(4, [&] {
      for (int i = 0; i < 100; ++i) lane.submit([&] { ++done; });
    }).clear();
    lane.submit([&] { end.count_down(); });
    end.wait();
  }
  EXPECT_EQ(done, 400U);
  EXPECT_THAT(prepared, ElementsAre("walks"));
}

TEST_F(ThreadTest, severalThreadsGetPastHungWork) {
  std::latch bothHang(2);
  std::latch passed(1);
  ThreadLane lane("several", {}, 3);
  for (int i = 0; i < 2; ++i) {
    lane.submit([&] {
      bothHang.count_down();
      passed.wait();
    });
  }
  bothHang.wait();
  lane.submit([&] { passed.count_down(); });
  passed.wait();
}

TEST_F(ThreadTest, destroyedLaneFinishesRunningWorkOnly) {
  auto lane = makeLane();
  std::latch begun(1);
  std::atomic<bool> finished = false;
  const auto dropped = std::make_shared<std::atomic<bool>>(false);
  lane->submit([&, alive = std::weak_ptr(lane)] {
    begun.count_down();
    // Runs into the destructor, and leaves it ample time to close the lane.
    for (int turns = 0; turns < 100'000; turns += alive.expired() ? 1 : 0) std::this_thread::yield();
    finished = true;
  });
  lane->submit([dropped] { *dropped = true; });
  begun.wait();
  lane.reset();
  EXPECT_TRUE(finished);
  EXPECT_FALSE(*dropped);
  EXPECT_EQ(dropped.use_count(), 1);
  EXPECT_NO_THROW(makeLane().reset());  // one that never worked
}

TEST_F(ThreadTest, destroyedWorkMaySubmitMore) {
  const auto lane = makeLane();
  std::latch done(1);
  std::shared_ptr<void> last(nullptr, [&](void*) { lane->submit([&] { done.count_down(); }); });
  lane->submit([last = std::move(last)] {});
  done.wait();
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
  std::atomic<int> sign = 1;
  const auto senders = inThreads(2, [&] {
    const int mine = sign.exchange(-1);
    for (int i = 1; i <= each; ++i) arrivals->add(mine * i);
  });
  while (!task.isDone()) {
    waker.wait();
    loop->run();
  }
  EXPECT_EQ(taken->size(), 2U * each);
  std::erase_if(*taken, [](int value) { return value < 0; });
  for (int i = 0; i < each; ++i) ASSERT_EQ(taken->at(static_cast<std::size_t>(i)), i + 1);
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
  std::jthread reader([&, mine = *flag] {
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

Task gated(MainLoop&, std::shared_ptr<WorkLane> lane, std::shared_ptr<Gate> gate,
           std::shared_ptr<int> witness) {
  const auto work = [gate] {
    gate->pass();
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
  auto posters = inThreads(2, [&, inbox = loop->inbox()] {
    inbox->post([witness] {});
    started.count_down();
    while (!stop) inbox->post([witness] {});
  });
  started.wait();
  loop.reset();
  stop = true;
  posters.clear();
  EXPECT_EQ(witness.use_count(), 1);
}

}  // namespace
}  // namespace kestrune
