#include <gtest/gtest.h>

#include "platform/linux/memory/LinuxMemory.h"
#include "support/TemporaryFolder.h"

namespace kestrune::platform {
namespace {

constexpr std::uint64_t kib = 1024;

class LinuxMemoryTest : public testing::Test {
 protected:
  std::uint64_t used() {
    const auto pages = memory.virtualMemoryPages();
    if (!pages) return 0;
    return (pages->wired + pages->active + pages->compressed) * memory.pageSize();
  }

  test::TemporaryFolder root;
  LinuxMemory memory{root.path()};
};

TEST_F(LinuxMemoryTest, usedIsWhatIsNotAvailable) {
  root.write("proc/meminfo",
             "MemTotal:       16000000 kB\nMemFree:         1000000 kB\nMemAvailable:    9000000 kB\n"
             "Cached:          7000000 kB\nSwapTotal:       4000000 kB\nSwapFree:        3000000 kB\n"
             "Zswap:             50000 kB\nZswapped:         200000 kB\nAnonPages:       4000000 kB\n"
             "Shmem:            500000 kB\nHugePages_Total:       0\n");
  root.write("sys/block/zram0/mm_stat", "  8192000  2048000  3072000        0  9999999        0        0\n");
  root.write("sys/block/zram1/mm_stat", "garbage\n");
  root.write("sys/block/sda/mm_stat", "1 1 999999999999\n");
  const auto pages = memory.virtualMemoryPages();
  ASSERT_TRUE(pages);
  EXPECT_EQ(pages->compressed, 53000U) << "the pool of zswap and what zram takes up";
  EXPECT_EQ(pages->active, 4500000U);
  EXPECT_EQ(used(), 7000000U * kib);
  EXPECT_EQ(memory.physicalBytes(), 16000000U * kib);
  const auto swap = memory.swapUsage();
  ASSERT_TRUE(swap);
  EXPECT_EQ(swap->totalBytes, 4000000U * kib);
  EXPECT_EQ(swap->usedBytes, 1000000U * kib);
}

TEST_F(LinuxMemoryTest, figuresThatDoNotFitTogetherNeverUnderflow) {
  root.write("proc/meminfo", "MemTotal: 1000 kB\nMemAvailable: 5000 kB\nSwapTotal: 0 kB\nSwapFree: 10 kB\n");
  EXPECT_TRUE(memory.virtualMemoryPages());
  EXPECT_EQ(used(), 0U);
  EXPECT_EQ(memory.swapUsage()->usedBytes, 0U);
  root.write("proc/meminfo", "MemTotal: 1000 kB\nMemAvailable: 900 kB\nAnonPages: 5000 kB\nZswap: 60 kB\n");
  EXPECT_EQ(used(), 100U * kib);
  EXPECT_EQ(memory.virtualMemoryPages()->compressed, 60U);
  EXPECT_EQ(memory.virtualMemoryPages()->active, 40U);
}

TEST_F(LinuxMemoryTest, anOldKernelsFigureIsWorkedOut) {
  root.write("proc/meminfo",
             "MemTotal: 1000 kB\nMemFree: 300 kB\nBuffers: 50 kB\nCached: 250 kB\nShmem: 100 kB\n");
  EXPECT_EQ(used(), 500U * kib);
}

TEST_F(LinuxMemoryTest, missingAndDamagedFilesAreFailures) {
  EXPECT_FALSE(memory.virtualMemoryPages());
  EXPECT_FALSE(memory.physicalBytes());
  EXPECT_FALSE(memory.swapUsage());
  for (const auto* text : {"", "MemTotal: kB\nMemAvailable: 5 kB\n", "MemTotal: 10 kB\nMemAvailable: 9",
                           "MemTotal: 18446744073709551615 kB\nMemAvailable: 5 kB\n"}) {
    root.write("proc/meminfo", text);
    EXPECT_FALSE(memory.virtualMemoryPages()) << text;
  }
}

}  // namespace
}  // namespace kestrune::platform
