// How the provider has the processes looked at: when, where, and what becomes of the answer.
#include "CPUProviderFixture.h"

namespace kestrune {
namespace {

using namespace std::chrono_literals;
using test::names;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class ProcessScanTest : public test::CPUProviderFixture {
 protected:
  ProcessScanTest() {
    processTable->processes[10] = {"compiler", "/usr/bin/compiler", {.residentBytes = 4096}};
    processTable->processes[11] = {"idler", "", {}};
  }

  // A second in which the compiler used so much of one processor.
  void tickWithLoad(Duration used) {
    processTable->processes[10].info.userNanoseconds += static_cast<std::uint64_t>(used.count());
    tick();
  }

  const std::vector<CPUSnapshot::ProcessInfo>& top() { return provider->current->topProcesses; }
};

TEST_F(ProcessScanTest, firstScanEmptiesTheDemonstrationAndTheSecondFillsTheList) {
  for (int i = 0; i < 2; ++i) tickWithLoad(500ms);
  EXPECT_THAT(top(), SizeIs(3));
  tickWithLoad(500ms);
  EXPECT_THAT(top(), IsEmpty());
  EXPECT_THAT((*provider->history)[2].value.topProcesses, SizeIs(3)) << "the tick that began the scan";

  for (int i = 0; i < 2; ++i) tickWithLoad(500ms);
  EXPECT_THAT(top(), IsEmpty());
  tickWithLoad(500ms);
  ASSERT_THAT(names(top()), ElementsAre("compiler"));
  EXPECT_DOUBLE_EQ(top()[0].cpuPercent, 50.0);
  EXPECT_EQ(top()[0].executablePath, "/usr/bin/compiler");
  EXPECT_EQ(processTable->walks, 2);
}

TEST_F(ProcessScanTest, oneScanAtATimeAndTheDelayedOneComesWithTheNextTick) {
  holdsLane = true;
  for (int i = 0; i < 8; ++i) tick();
  EXPECT_EQ(lane->waiting(), 1U);
  EXPECT_EQ(processTable->walks, 0);
  lane->run();
  settle();
  EXPECT_THAT(top(), IsEmpty());
  EXPECT_EQ(lane->waiting(), 0U);

  // The ticks that passed meanwhile count, so the next scan doesn't wait for three more.
  tick();
  EXPECT_EQ(lane->waiting(), 1U);
  lane->run();
  settle();
  for (int i = 0; i < 2; ++i) tick();
  EXPECT_EQ(lane->waiting(), 0U);
  tick();
  EXPECT_EQ(lane->waiting(), 1U);
}

TEST_F(ProcessScanTest, providerMayGoWhileAScanIsUnderWay) {
  holdsLane = true;
  provider->start(1s);
  advance(2s);
  ASSERT_EQ(lane->waiting(), 1U);
  const std::weak_ptr<CPUProvider> gone = provider;
  provider.reset();
  EXPECT_TRUE(gone.expired());
  holdsLane = false;
  settle();
  EXPECT_EQ(processTable->walks, 1);
  EXPECT_EQ(loop.nextDeadline(), std::nullopt) << "its loop has ended";
}

}  // namespace
}  // namespace kestrune
