#include <gmock/gmock.h>

#include "providers/DiskProvider.h"
#include "support/ScriptedPlatform.h"

namespace kestrune {
namespace {

using namespace std::chrono_literals;

class DiskProviderTest : public testing::Test, public test::ScriptedPlatform {
 protected:
  void setDrives(std::vector<platform::BlockDriver> drives) { blockStorage.drivers = std::move(drives); }
  void tickAfter(Duration time) {
    clock.setContinuous(clock.continuousNow() + time);
    provider->tick();
  }
  const DiskSnapshot& now() const { return *provider->current; }

  std::shared_ptr<DiskProvider> provider = std::make_shared<DiskProvider>(loop, blockStorage, volumes);
};

TEST_F(DiskProviderTest, firstFiguresComeAfterAWholeInterval) {
  setDrives({{.bytesRead = 1000000, .bytesWritten = 500}});
  provider->start(1s);
  setDrives({{.bytesRead = 1003000, .bytesWritten = 700}, {.bytesRead = 10, .bytesWritten = {}}});
  advance(999ms);
  EXPECT_EQ(provider->history->size(), 0U);
  advance(1ms);
  EXPECT_EQ(now().readBytesPerSec, 3010.0) << "a drive that counts only what is read counts for that";
  EXPECT_EQ(now().writeBytesPerSec, 200.0);
}

TEST_F(DiskProviderTest, aCounterThatFellIsNoRateAndTheOtherStaysTrue) {
  setDrives({{.bytesRead = 5000, .bytesWritten = 1000}});
  provider->start(1s);
  setDrives({{.bytesRead = 100, .bytesWritten = 3000}});
  tickAfter(2s);
  EXPECT_EQ(now().readBytesPerSec, 0.0);
  EXPECT_EQ(now().writeBytesPerSec, 1000.0);
}

TEST_F(DiskProviderTest, readingsTooCloseRepeatTheFiguresAndUseUpTheBytes) {
  setDrives({{.bytesRead = 0, .bytesWritten = 0}});
  provider->start(1s);
  setDrives({{.bytesRead = 700, .bytesWritten = 0}});
  tickAfter(1s);
  setDrives({{.bytesRead = 1700, .bytesWritten = 0}});
  volumes.rootName = "Renamed";
  tickAfter(50ms);
  EXPECT_EQ(now().readBytesPerSec, 700.0);
  EXPECT_EQ(now().volumeName, "Test Disk");
  EXPECT_EQ(provider->history->size(), 2U);
  setDrives({{.bytesRead = 1800, .bytesWritten = 0}});
  tickAfter(1s);
  EXPECT_EQ(now().readBytesPerSec, 100.0);
  EXPECT_EQ(now().volumeName, "Renamed");
}

TEST_F(DiskProviderTest, aFailedListSkipsTheTick) {
  setDrives({{.bytesRead = 0, .bytesWritten = 0}});
  provider->start(1s);
  blockStorage.drivers.reset();
  tickAfter(1s);
  EXPECT_EQ(provider->history->size(), 0U);
  setDrives({{.bytesRead = 600, .bytesWritten = 0}});
  tickAfter(2s);
  EXPECT_EQ(now().readBytesPerSec, 200.0) << "over all the time since the last good reading";
}

TEST_F(DiskProviderTest, whatTheVolumeDoesNotTellStaysAsItWas) {
  provider->start(1s);
  volumes.rootName.reset();
  volumes.rootCapacity = platform::VolumeCapacity{.totalBytes = 100, .freeBytes = 300};
  tickAfter(1s);
  EXPECT_EQ(now().volumeName, "Macintosh HD");
  EXPECT_EQ(now().volumeUsedBytes, 0U) << "more free than there is";
  volumes.rootName = "bad\xFF";
  volumes.rootCapacity.reset();
  tickAfter(1s);
  EXPECT_EQ(now().volumeName, "bad\uFFFD");
  EXPECT_EQ(now().volumeTotalBytes, 100U);
  EXPECT_EQ(now().volumeFreeBytes, 300U);
}

}  // namespace
}  // namespace kestrune
