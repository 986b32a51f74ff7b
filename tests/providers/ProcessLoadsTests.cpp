#include <gmock/gmock.h>

#include "providers/ProcessLoads.h"

namespace kestrune {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

constexpr std::uint64_t second = 1'000'000'000;  // nanoseconds
constexpr Date start{1000};

ProcessEntry entry(std::int32_t pid, std::uint64_t user, std::uint64_t sys = 0) {
  return {.pid = pid,
          .name = "process " + std::to_string(pid),
          .executablePath = "/bin/" + std::to_string(pid),
          .memoryBytes = 4096,
          .tickUser = user,
          .tickSys = sys};
}

// The busiest, by a previous scan in which every process stood at 100 s of user and of system time.
std::vector<CPUSnapshot::ProcessInfo> busiest(const std::vector<ProcessEntry>& entries, double span = 1) {
  ProcessTicks previous;
  for (const auto& each : entries) previous[each.pid] = {100 * second, 100 * second, start};
  return processLoads(entries, previous, start + span).busiest;
}

ProcessEntry used(std::int32_t pid, std::uint64_t nanoseconds) {
  return entry(pid, 100 * second + nanoseconds, 100 * second);
}

auto idIs(std::int32_t id) {
  return testing::Field(&CPUSnapshot::ProcessInfo::id, id);
}

TEST(ProcessLoads, loadIsUserAndSystemTimeOverTheSpan) {
  const auto rows = busiest({entry(7, 101 * second, 100 * second + second / 2)}, 3);
  ASSERT_THAT(rows, SizeIs(1));
  EXPECT_DOUBLE_EQ(rows[0].cpuPercent, 50.0);
}

TEST(ProcessLoads, listsLoadsWithinBounds) {
  EXPECT_THAT(busiest({used(1, 500'000)}), IsEmpty()) << "exactly 0.05 percent";
  EXPECT_THAT(busiest({used(1, 500'010)}), SizeIs(1));

  const auto rows = busiest({used(1, 12 * second), used(2, 15 * second)});
  ASSERT_THAT(rows, ElementsAre(idIs(1), idIs(2))) << "both are cut to the same value";
  EXPECT_EQ(rows[0].cpuPercent, 999.0);
  EXPECT_EQ(rows[1].cpuPercent, 999.0);
}

TEST(ProcessLoads, listsNothingWithoutGrowth) {
  EXPECT_THAT(busiest({used(1, second)}, -5), IsEmpty()) << "the wall clock was set back";
  const auto rows = busiest({entry(1, 50 * second, 100 * second + second / 4), entry(2, 0, 0)});
  ASSERT_THAT(rows, ElementsAre(idIs(1))) << "the user time of both ran backwards";
  EXPECT_DOUBLE_EQ(rows[0].cpuPercent, 25.0);
}

TEST(ProcessLoads, sortsStablyByLoad) {
  std::vector<ProcessEntry> entries;
  for (std::int32_t pid = 60; pid > 10; --pid) entries.push_back(used(pid, second / 10));
  for (const std::int32_t pid : {3, 1, 2}) entries.push_back(used(pid, second / 2));
  entries.push_back(used(99, second));
  EXPECT_THAT(busiest(entries),
              ElementsAre(idIs(99), idIs(3), idIs(1), idIs(2), idIs(60), idIs(59), idIs(58), idIs(57)));
}

TEST(ProcessLoads, listsOnlyProcessesOfThePreviousScan) {
  const std::vector<ProcessEntry> entries{entry(1, 5 * second, second), entry(2, 3 * second)};
  const auto first = processLoads(entries, {}, start);
  EXPECT_THAT(first.busiest, IsEmpty());
  ASSERT_THAT(first.ticks, SizeIs(2));

  const auto later = processLoads({entry(2, 4 * second), entry(3, 9 * second)}, first.ticks, start + 2);
  EXPECT_THAT(later.busiest, ElementsAre(idIs(2)));
  EXPECT_THAT(later.ticks, SizeIs(2));
  EXPECT_FALSE(later.ticks.contains(1)) << "it has ended";
}

}  // namespace
}  // namespace kestrune
