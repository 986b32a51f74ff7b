// Rates of the drives and of the network: the same arithmetic over different counters.
#include <gmock/gmock.h>

#include "support/Providers.h"

namespace kestrune {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;

TEST(CounterPairTest, growthNeedsMoreThanATenthOfASecond) {
  const CounterPair before{.first = 10, .second = 20, .time = {1000}};
  for (const double seconds : {-5.0, 0.0, 0.09375}) {
    EXPECT_FALSE((CounterPair{99, 99, before.time + seconds}.growthSince(before))) << seconds;
  }
  const auto growth = CounterPair{11, 22, before.time + 0.125}.growthSince(before);
  ASSERT_TRUE(growth);
  EXPECT_EQ(growth->firstPerSecond(), 8);
  EXPECT_EQ(growth->secondPerSecond(), 16);
}

class RateTest : public testing::Test, public test::ScriptedPlatform {
 protected:
  // What the disk has read and written, and the network sent and received, from now on.
  void count(std::uint64_t first, std::uint64_t second) {
    blockStorage.drivers = {{.bytesRead = first, .bytesWritten = second}};
    networkInterfaces.setLink("en0", second, first);
  }
  void fail() {
    blockStorage.drivers.reset();
    networkInterfaces.list.reset();
  }
  void start() {
    disk.start(1s);
    network.start(1s);
  }
  void tickAfter(Duration time) {
    clock.setContinuous(clock.continuousNow() + time);
    disk.tick();
    network.tick();
  }
  void expect(double first, double second, std::size_t samples) {
    EXPECT_EQ(disk.current->readBytesPerSec, first);
    EXPECT_EQ(disk.current->writeBytesPerSec, second);
    EXPECT_EQ(network.current->uploadBytesPerSec, first);
    EXPECT_EQ(network.current->downloadBytesPerSec, second);
    EXPECT_EQ(disk.history->size(), samples);
    EXPECT_EQ(network.history->size(), samples);
    EXPECT_EQ(network.uploadHistory->size(), samples);
    EXPECT_EQ(network.downloadHistory->size(), samples);
  }

  test::Providers providers{*this};
  DiskProvider& disk = *providers.disk;
  NetworkProvider& network = *providers.network;
};

TEST_F(RateTest, firstRateCoversAWholeInterval) {
  count(1000000, 500);
  start();
  count(1003000, 700);
  advance(999ms);
  EXPECT_EQ(disk.history->size() + network.history->size(), 0U);
  advance(1ms);
  expect(3000, 200, 1);
  EXPECT_EQ(network.uploadHistory->values(), std::vector{3000.0});
  EXPECT_EQ(network.downloadHistory->values(), std::vector{200.0});
  advance(99s);
  EXPECT_EQ(disk.history->size(), 60U);
  EXPECT_EQ(network.history->size(), 60U);
  EXPECT_EQ(network.uploadHistory->size(), 100U);
}

TEST_F(RateTest, ratesCoverTheTimeSinceTheLastGoodReading) {
  start();
  fail();
  tickAfter(1s);
  EXPECT_EQ(disk.history->size() + network.history->size(), 0U) << "a failed reading skips the tick";

  struct Step {
    const char* name;
    std::optional<std::pair<std::uint64_t, std::uint64_t>> counters;
    Duration after;
    double first, second;
    std::size_t samples;
  };
  for (const auto& [name, counters, after, first, second, samples] :
       {Step{"first reading", {{0, 0}}, 1s, 0, 0, 1},
        Step{"over two seconds", {{5000, 1000}}, 2s, 2500, 500, 2},
        Step{"too close: repeats and uses up the bytes", {{6000, 1000}}, 62500us, 2500, 500, 3},
        Step{"after that", {{6100, 1000}}, 1s, 100, 0, 4}, Step{"failed", {}, 1s, 100, 0, 4},
        Step{"over both seconds", {{6300, 1600}}, 1s, 100, 300, 5},
        Step{"one counter fell", {{100, 3600}}, 2s, 0, 1000, 6}}) {
    SCOPED_TRACE(name);
    counters ? count(counters->first, counters->second) : fail();
    tickAfter(after);
    expect(first, second, samples);
  }
}

TEST_F(RateTest, sumsAllDrives) {
  count(1000, 500);
  start();
  blockStorage.drivers = {{.bytesRead = 1300, .bytesWritten = 600}, {.bytesRead = 10, .bytesWritten = {}}};
  tickAfter(1s);
  EXPECT_EQ(disk.current->readBytesPerSec, 310);
  EXPECT_EQ(disk.current->writeBytesPerSec, 100);
}

TEST_F(RateTest, countsTrafficOfPhysicalInterfacesOnly) {
  start();
  for (const auto* name : {"lo0", "utun3", "awdl0", "llw0", "bridge100", "p2p0", "lo", "ipsec1", "docker0"}) {
    networkInterfaces.setLink(name, 1000, 1000);
  }
  networkInterfaces.setLink("stacked", 1000, 1000);
  networkInterfaces.list->links.back().isCarriedByAnother = true;
  for (const auto* name : {"en5", "anpi0", "wlan0", "wwan0"}) networkInterfaces.setLink(name, 0, 0);
  tickAfter(1s);
  EXPECT_EQ(network.current->downloadBytesPerSec, 0);
  for (const auto* name : {"en5", "anpi0", "wlan0", "wwan0"}) networkInterfaces.setLink(name, 10, 1);
  networkInterfaces.list->links.push_back({.name = "en6", .counters = {}});
  tickAfter(1s);
  EXPECT_EQ(network.current->downloadBytesPerSec, 40);
  EXPECT_EQ(network.current->uploadBytesPerSec, 4);
}

TEST_F(RateTest, volumeFiguresThatCannotBeReadStay) {
  const DiskSnapshot& now = *disk.current;
  start();
  volumes.rootName.reset();
  volumes.rootCapacity = platform::VolumeCapacity{.totalBytes = 100, .freeBytes = 300};
  tickAfter(1s);
  EXPECT_EQ(now.volumeName, "Macintosh HD");
  EXPECT_EQ(now.volumeUsedBytes, 0U) << "more free than there is";
  volumes.rootName = "bad\xFF";
  volumes.rootCapacity.reset();
  tickAfter(62500us);
  EXPECT_EQ(now.volumeName, "Macintosh HD") << "not read when the rates repeat";
  tickAfter(1s);
  EXPECT_EQ(now.volumeName, "bad\uFFFD");
  EXPECT_EQ(now.volumeTotalBytes, 100U);
  EXPECT_EQ(now.volumeFreeBytes, 300U);
  volumes.rootCapacity = platform::VolumeCapacity{.totalBytes = 1000, .freeBytes = 400};
  tickAfter(1s);
  EXPECT_EQ(now.volumeUsedBytes, 600U);
}

}  // namespace
}  // namespace kestrune
