#include <gmock/gmock.h>

#include "support/Providers.h"

namespace kestrune {
namespace {

using namespace std::chrono_literals;
using Pressure = MemorySnapshot::MemoryPressure;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::uint64_t mebibyte = 1048576;

class MemoryProviderTest : public testing::Test, public test::ScriptedPlatform {
 protected:
  void SetUp() override {
    memory.physical = 1000;
    use(500);
  }
  void use(std::uint64_t wired) { memory.used = platform::MemoryUsage{.wiredBytes = wired}; }
  std::vector<std::string> listed() const {
    std::vector<std::string> names;
    for (const auto& row : provider->current->topProcesses) names.push_back(row.name);
    return names;
  }

  std::shared_ptr<MemoryProvider> provider = test::Providers(*this).memory;
};
using MemoryProviderDeathTest = MemoryProviderTest;

TEST_F(MemoryProviderTest, readsAtOnceAndThenOncePerInterval) {
  memory.physical = 64ULL << 20U;
  memory.used =
      platform::MemoryUsage{.wiredBytes = 1000000, .activeBytes = 2000000, .compressedBytes = 500000};
  memory.swap = platform::SwapUsage{.totalBytes = 4096, .usedBytes = 1024};
  provider->start(2s);
  const MemorySnapshot& now = *provider->current;
  EXPECT_EQ(now.wiredBytes, 1000000U);
  EXPECT_EQ(now.appBytes, 2000000U);
  EXPECT_EQ(now.compressedBytes, 500000U);
  EXPECT_EQ(now.usedBytes, 3500000U);
  EXPECT_EQ(now.swapTotalBytes, 4096U);
  EXPECT_EQ(now.swapUsedBytes, 1024U);
  EXPECT_THAT(provider->usageHistory->values(), ElementsAre(3500000.0 / (64 << 20) * 100));
  memory.physical = 1;
  advance(10s);
  EXPECT_EQ(provider->history->size(), 6U);
  EXPECT_EQ(provider->current->totalBytes, 64ULL << 20U) << "read once";
}

TEST_F(MemoryProviderTest, pressureFollowsTheShareInUse) {
  using enum Pressure;
  const std::vector<std::pair<std::uint64_t, Pressure>> levels = {
      {749, nominal}, {750, warning}, {899, warning}, {900, critical}, {1001, critical}};
  for (const auto& [used, pressure] : levels) {
    use(used);
    provider->tick();
    EXPECT_EQ(provider->current->pressure, pressure) << used;
  }
  EXPECT_EQ((*provider->usageHistory)[4].value, 1001.0 / 1000.0 * 100) << "not clamped";
}

TEST_F(MemoryProviderTest, failedReadsHaveFallbacks) {
  provider->tick();
  memory.used.reset();
  provider->tick();
  EXPECT_EQ(provider->history->size(), 1U);
  EXPECT_EQ(provider->current->usedBytes, 500U);
  use(500);
  memory.swap.reset();
  provider->tick();
  EXPECT_EQ(provider->current->swapTotalBytes, 0U);
  memory.physical.reset();
  const auto untotalled = test::Providers(*this).memory;
  untotalled->tick();
  EXPECT_EQ(untotalled->current->pressure, Pressure::nominal);
  EXPECT_THAT(untotalled->usageHistory->values(), ElementsAre(0.0)) << "without a total";
}

TEST_F(MemoryProviderTest, listsTheLargestProcessesFromTheThirdTickOn) {
  for (std::int32_t pid = 1; pid <= 12; ++pid) {
    processTable->processes[pid] = {
        std::to_string(pid), "", {.residentBytes = mebibyte + static_cast<std::uint64_t>(pid / 2)}};
  }
  processTable->processes[20] = {"just too small", "", {.residentBytes = mebibyte}};
  provider->start(2s);
  advance(3s);
  EXPECT_THAT(listed(), IsEmpty());
  advance(1s);
  EXPECT_THAT(listed(), ElementsAre("12", "10", "11", "8", "9", "6", "7", "4", "5", "2"));
  EXPECT_EQ(provider->current->topProcesses[0].memoryBytes, mebibyte + 6);
  processTable->processes.clear();
  advance(4s);
  EXPECT_EQ(listed().size(), 10U) << "kept from tick to tick";
  EXPECT_EQ(processTable->walks, 1);
  advance(2s);
  EXPECT_THAT(listed(), IsEmpty());
}

TEST_F(MemoryProviderDeathTest, overflowEndsTheProcess) {
  memory.used = platform::MemoryUsage{.wiredBytes = ~std::uint64_t{0}, .activeBytes = 1};
  EXPECT_DEATH(provider->tick(), "memory");
}

}  // namespace
}  // namespace kestrune
