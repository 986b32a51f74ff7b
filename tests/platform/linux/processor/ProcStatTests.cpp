#include <gtest/gtest.h>

#include "platform/linux/processor/CpuList.h"
#include "platform/linux/processor/ProcStat.h"

namespace kestrune::platform {
namespace {

TEST(ProcStat, refusesTruncatedText) {
  std::vector<RawProcessor> processors;
  const std::string whole = "cpu  9 9 9 9\ncpu0 1 2 3 4 5 6 7 8 9 10\ncpu7 11 12 13 14\nintr 5\n";
  ASSERT_TRUE(parseProcStat(whole, processors));
  ASSERT_EQ(processors.size(), 2U);
  EXPECT_EQ(processors[0], (RawProcessor{0, {1, 2, 3, 4, 5, 6, 7, 8}}));
  EXPECT_EQ(processors[1], (RawProcessor{7, {11, 12, 13, 14}})) << "an old kernel has four states";

  const auto firstSafe = whole.find("intr") + 1;
  for (std::size_t length = 0; length < whole.size(); ++length) {
    EXPECT_EQ(parseProcStat(whole.substr(0, length), processors), length >= firstSafe) << length;
  }
}

TEST(ProcStat, refusesInvalidText) {
  std::vector<RawProcessor> processors;
  for (const char* line : {"", "cpu  1 2 3 4\n", "cpux 1 2 3 4\n", "cpu0 1 2 3\n", "cpu0 1 2 x 4\n",
                           "cpu0 1 2 -3 4\n", "cpu-1 1 2 3 4\n", "cpu0 1 2 3 99999999999999999999\n"}) {
    EXPECT_FALSE(parseProcStat(line + std::string("intr 5\n"), processors)) << line;
  }
}

TEST(CpuList, readsRangesAndRefusesTheRest) {
  using Ids = std::vector<std::int32_t>;
  EXPECT_EQ(parseCpuList("0-2,8,10-11\n"), (Ids{0, 1, 2, 8, 10, 11}));
  EXPECT_EQ(parseCpuList("65535"), Ids{65535});
  EXPECT_EQ(parseCpuList("\n"), Ids{});
  for (const char* text : {"0-", "-3", "3-1", "1,,2", "1,", ",1", "a", "0-65536", "2,1", "1-3,2", "0x1"}) {
    EXPECT_FALSE(parseCpuList(text)) << text;
  }
}

}  // namespace
}  // namespace kestrune::platform
