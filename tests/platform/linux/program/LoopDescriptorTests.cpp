#include <thread>

#include <gtest/gtest.h>
#include <poll.h>

#include "platform/linux/program/LoopDescriptor.h"
#include "platform/linux/time/LinuxClock.h"

namespace kestrune::platform {
namespace {

using namespace std::chrono_literals;

class LoopDescriptorTest : public testing::Test {
 protected:
  bool isReadable(int milliseconds) const {
    pollfd waiting{.fd = descriptor.fd(), .events = POLLIN, .revents = 0};
    return poll(&waiting, 1, milliseconds) == 1;
  }
  // Runs the loop whenever the descriptor is readable, until `done` or ten seconds have passed.
  template <class Done>
  bool runUntil(Done done) {
    const auto end = clock.continuousNow() + 10s;
    while (!done() && clock.continuousNow() < end) {
      if (isReadable(10'000)) loop.run();
    }
    return done();
  }

  LinuxClock clock;
  LoopDescriptor descriptor;
  MainLoop loop{clock, descriptor};
};

TEST_F(LoopDescriptorTest, isReadableOnlyWhileThereIsWork) {
  loop.run();
  EXPECT_FALSE(isReadable(0));
  loop.post([] {});
  EXPECT_TRUE(isReadable(0));
  loop.run();
  EXPECT_FALSE(isReadable(0));
  const auto timer = loop.after(1h, [] {});
  EXPECT_FALSE(isReadable(0));
  loop.cancelTimer(timer);
}

TEST_F(LoopDescriptorTest, wakesForJobsOfOtherThreads) {
  constexpr int jobs = 2000;
  int ran = 0;
  std::jthread poster([this, &ran] {
    for (int i = 0; i < jobs; ++i) loop.inbox()->post([&ran] { ++ran; });
  });
  EXPECT_TRUE(runUntil([&] { return ran == jobs; })) << ran;
  loop.run();
  EXPECT_FALSE(isReadable(0));
}

TEST_F(LoopDescriptorTest, wakesForTimersInOrder) {
  std::vector<int> order;
  const auto start = clock.continuousNow();
  loop.after(30ms, [&] { order.push_back(3); });
  loop.after(10ms, [&] { order.push_back(1); });
  loop.after(10ms, [&] { order.push_back(2); });
  EXPECT_TRUE(runUntil([&] { return order.size() == 3; }));
  EXPECT_EQ(order, (std::vector{1, 2, 3}));
  EXPECT_GE(clock.continuousNow() - start, 30ms);
  EXPECT_FALSE(isReadable(0));

  // A deadline in the past fires at once, also when it is set again.
  descriptor.setDeadline(start);
  EXPECT_TRUE(isReadable(1000));
  descriptor.acknowledge();
  EXPECT_FALSE(isReadable(0));
  descriptor.setDeadline(start);
  EXPECT_TRUE(isReadable(1000));
  descriptor.setDeadline(std::nullopt);
  EXPECT_FALSE(isReadable(0));
  descriptor.setDeadline(ContinuousTime(0));
  EXPECT_TRUE(isReadable(1000));
}

}  // namespace
}  // namespace kestrune::platform
