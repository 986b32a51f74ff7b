#include <gmock/gmock.h>
#include <malloc.h>

#include "app/AppEnvironment.h"
#include "support/ScriptedPlatform.h"

namespace kestrune {
namespace {

using namespace std::chrono_literals;

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
// The sanitizers' allocators don't count.
constexpr bool countsAllocations = false;
#else
constexpr bool countsAllocations = true;
#endif

// A machine with some of every kind of activity.
class WeekTest : public testing::Test, public test::ScriptedPlatform {
 protected:
  void SetUp() override {
    for (std::int32_t pid = 1; pid <= 20; ++pid) {
      processTable->processes[pid] = {"process " + std::to_string(pid), "/usr/bin/process", {}};
    }
    blockStorage.drivers = {{.bytesRead = 0, .bytesWritten = 0}};
    networkInterfaces.setLink("en0", 0, 0);
    powerSources.source.emplace();
    audio.next.clients = {{.id = 1, .isRunningOutput = true, .pid = 7}};
    processors.onRead = [this] {
      if (++seconds % 20000 == 0) processors.ticks->assign(4, {});
      processors.pass(100, std::vector<std::int32_t>(4, static_cast<std::int32_t>(seconds % 100)));
      const auto count = static_cast<std::uint64_t>(seconds);
      blockStorage.drivers->front() = {.bytesRead = count * 1000, .bytesWritten = count * 10};
      networkInterfaces.setLink("en0", count * 300, count * 20);
      for (auto& [pid, process] : processTable->processes) {
        process.info.userNanoseconds += static_cast<std::uint64_t>(pid) * 1000000;
        process.info.residentBytes = (2ULL << 20U) + count % 1000;
      }
    };
  }

  std::int64_t seconds = 0;
};

TEST_F(WeekTest, keepsItsRatesAndItsMemory) {
  Preferences store(preferences);
  LocaleFormats formats("en_US");
  const Catalogue texts;
  const AppEnvironment program(loop, platform, {.preferences = store, .texts = texts, .formats = formats});
  advance(48h);
  const auto allocated = mallinfo2().uordblks;
  advance(5 * 24h);
  if (countsAllocations) {
    EXPECT_NEAR(static_cast<double>(mallinfo2().uordblks), static_cast<double>(allocated), 65536.0);
  }
  EXPECT_EQ(seconds, 7 * 86400 + 1);
  EXPECT_EQ(program.disk->current->readBytesPerSec, 1000.0);
  EXPECT_EQ(program.network->current->uploadBytesPerSec, 20.0);
  EXPECT_EQ(program.network->uploadHistory->size(), 86400U);
  EXPECT_EQ(program.memory->usageHistory->size(), 43200U);
  EXPECT_EQ(program.battery->history->size(), 60U);
  EXPECT_EQ(program.memory->current->topProcesses.size(), 10U);
  EXPECT_EQ(program.audio->history->size(), 60U);
}

}  // namespace
}  // namespace kestrune
