#include <gmock/gmock.h>

#include "providers/ProcessScanCache.h"
#include "support/ScriptedPlatform.h"

namespace kestrune {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ProcessScanCacheTest : public testing::Test, public test::ScriptedPlatform {
 protected:
  void pass(double seconds) { clock.setWall(clock.now() + seconds); }

  std::vector<std::int32_t> pids() {
    std::vector<std::int32_t> result;
    for (const auto& entry : scans.entries()) result.push_back(entry.pid);
    return result;
  }

  ProcessScanCache scans{clock, processTable, *lane};
  std::map<std::int32_t, test::ScriptedProcessTable::Process>& processes = processTable->processes;
};

TEST_F(ProcessScanCacheTest, keepsAWalkForTwoSeconds) {
  processes[5] = {"editor", "", {.residentBytes = 1, .userNanoseconds = 10, .systemNanoseconds = 3}};
  EXPECT_EQ(scans.entries()[0].memoryBytes, 1U);
  EXPECT_EQ(scans.entries()[0].tickSys, 3U);
  processes[5].info.userNanoseconds = 20;
  pass(1.9);
  EXPECT_EQ(scans.entries()[0].tickUser, 10U);
  EXPECT_EQ(processTable->walks, 1);

  pass(0.1);
  EXPECT_EQ(scans.entries()[0].tickUser, 20U);
  EXPECT_EQ(processTable->walks, 2);
}

TEST_F(ProcessScanCacheTest, wallClockThatWasSetBackDoesNotFreezeTheList) {
  processes[5] = {"editor", "", {}};
  scans.entries();
  processes[6] = {"shell", "", {}};
  pass(-3600);
  EXPECT_THAT(pids(), ElementsAre(5, 6));
  pass(1);
  EXPECT_THAT(pids(), ElementsAre(5, 6));
  EXPECT_EQ(processTable->walks, 2);
}

TEST_F(ProcessScanCacheTest, unreadableTableIsRememberedAsEmpty) {
  processes[5] = {"editor", "", {}};
  processTable->isReadable = false;
  EXPECT_THAT(pids(), IsEmpty());
  processTable->isReadable = true;
  pass(1.5);
  EXPECT_THAT(pids(), IsEmpty());
  pass(0.5);
  EXPECT_THAT(pids(), ElementsAre(5));
}

TEST_F(ProcessScanCacheTest, namesAndPathsAreRepairedAndLimited) {
  const std::string path(1023, 'p');
  const std::string name(1500, 'n');
  processes = {{1, {"", "/bin/nameless", {}}},
               {2, {"pathless", "", {}}},
               {3, {"bad \xFF\x62yte", "/opt/\xC3/x", {}}},
               {4, {std::string("cut\0off", 7), path, {}}},
               {5, {name, path + "p", {}}}};
  std::vector<std::string> shown;
  for (const auto& entry : scans.entries()) shown.push_back(entry.name + "|" + entry.executablePath);
  EXPECT_THAT(shown, ElementsAre("pathless|", "bad \uFFFDbyte|/opt/\uFFFD/x", "cut|" + path,
                                 name.substr(0, 1023) + "|"));
}

}  // namespace
}  // namespace kestrune
