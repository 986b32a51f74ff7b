#include <gmock/gmock.h>

#include "platform/linux/memory/LinuxMemory.h"
#include "support/TemporaryFolder.h"

namespace kestrune::platform {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::uint64_t kib = 1024;

class LinuxMemoryTest : public testing::Test {
 protected:
  // Wired, active and compressed, in KiB; empty: the read failed.
  std::vector<std::uint64_t> usage() {
    const auto usage = memory.usage();
    if (!usage) return {};
    return {usage->wiredBytes / kib, usage->activeBytes / kib, usage->compressedBytes / kib};
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
  EXPECT_THAT(usage(), ElementsAre(7000000 - 4500000 - 53000, 4500000, 53000))
      << "compressed is the pool of zswap and what zram takes up";
  EXPECT_EQ(memory.physicalBytes(), 16000000 * kib);
  EXPECT_EQ(memory.swapUsage()->totalBytes, 4000000 * kib);
  EXPECT_EQ(memory.swapUsage()->usedBytes, 1000000 * kib);
}

TEST_F(LinuxMemoryTest, contradictoryFiguresNeverUnderflow) {
  root.write("proc/meminfo", "MemTotal: 1000 kB\nMemAvailable: 5000 kB\nSwapTotal: 0 kB\nSwapFree: 10 kB\n");
  EXPECT_THAT(usage(), ElementsAre(0, 0, 0));
  EXPECT_EQ(memory.swapUsage()->usedBytes, 0U);
  root.write("proc/meminfo", "MemTotal: 1000 kB\nMemAvailable: 900 kB\nAnonPages: 5000 kB\nZswap: 60 kB\n");
  EXPECT_THAT(usage(), ElementsAre(0, 40, 60));
}

TEST_F(LinuxMemoryTest, availableMemoryIsWorkedOutForOldKernels) {
  root.write("proc/meminfo",
             "MemTotal: 1000 kB\nMemFree: 300 kB\nBuffers: 50 kB\nCached: 250 kB\nShmem: 100 kB\n");
  EXPECT_THAT(usage(), ElementsAre(400, 100, 0));
}

TEST_F(LinuxMemoryTest, missingAndDamagedFilesAreFailures) {
  EXPECT_THAT(usage(), IsEmpty());
  EXPECT_FALSE(memory.physicalBytes());
  EXPECT_FALSE(memory.swapUsage());
  for (const auto* text : {"", "MemTotal: kB\nMemAvailable: 5 kB\n", "MemTotal: 10 kB\nMemAvailable: 9",
                           "MemTotal: 18446744073709551615 kB\nMemAvailable: 5 kB\n"}) {
    root.write("proc/meminfo", text);
    EXPECT_THAT(usage(), IsEmpty()) << text;
  }
}

}  // namespace
}  // namespace kestrune::platform
