#include <gtest/gtest.h>

#include "platform/linux/processes/PidStat.h"
#include "platform/linux/processor/CpuList.h"
#include "platform/linux/processor/ProcStat.h"

namespace kestrune::platform {
namespace {

TEST(ProcStat, takesNoTextThatMayBeCut) {
  std::vector<RawProcessor> processors;
  const std::string whole = "cpu  9 9 9 9\ncpu0 1 2 3 4 5 6 7 8 9 10\ncpu7 11 12 13 14\nintr 5\n";
  ASSERT_TRUE(parseProcStat(whole, processors));
  ASSERT_EQ(processors.size(), 2U);
  EXPECT_EQ(processors[0], (RawProcessor{0, {1, 2, 3, 4, 5, 6, 7, 8}}));
  EXPECT_EQ(processors[1], (RawProcessor{7, {11, 12, 13, 14}})) << "an old kernel tells four states";

  const auto firstSafe = whole.find("intr") + 1;
  for (std::size_t length = 0; length < whole.size(); ++length) {
    EXPECT_EQ(parseProcStat(whole.substr(0, length), processors), length >= firstSafe) << length;
  }
}

TEST(ProcStat, takesNoGarbage) {
  std::vector<RawProcessor> processors;
  for (const char* text :
       {"intr 5\n", "cpu  1 2 3 4\nintr 5\n", "cpux 1 2 3 4\nintr 5\n", "cpu0 1 2 3\nintr 5\n",
        "cpu0 1 2 x 4\nintr 5\n", "cpu0 1 2 -3 4\nintr 5\n", "cpu-1 1 2 3 4\nintr 5\n",
        "cpu0 1 2 3 99999999999999999999\nintr 5\n", "\0\0\0\n"}) {
    EXPECT_FALSE(parseProcStat(text, processors)) << text;
  }
}

TEST(CpuList, readsRangesAndRefusesTheRest) {
  using Ids = std::vector<std::int32_t>;
  EXPECT_EQ(parseCpuList("0-2,8,10-11\n"), (Ids{0, 1, 2, 8, 10, 11}));
  EXPECT_EQ(parseCpuList("5"), Ids{5});
  EXPECT_EQ(parseCpuList("\n"), Ids{});
  for (const char* text : {"0-", "-3", "3-1", "1,,2", "1,", "a", "0-99999999", "2,1", "1-3,2", "0x1"}) {
    EXPECT_FALSE(parseCpuList(text)) << text;
  }
}

constexpr std::string_view figures =
    " S 1 1 1 0 -1 4194560 100 200 3 4 150 75 10 20 20 0 1 0 4242 12345678 321 18446744073709551615 1 1\n";

TEST(PidStat, findsTheNameWhateverItHolds) {
  for (const std::string name : {"bash", ") S 1 (", "a b", "line\nbreak", "caf\xE9", "", "(((", "x) R 9"}) {
    const std::string text = "77 (" + name + ")" + std::string(figures);
    const auto stat = parsePidStat(text);
    ASSERT_TRUE(stat) << name;
    EXPECT_EQ(stat->name, name);
    EXPECT_EQ(stat->userTicks, 150U);
    EXPECT_EQ(stat->systemTicks, 75U);
    EXPECT_EQ(stat->startTime, 4242U);
    EXPECT_EQ(stat->residentPages, 321U);
    EXPECT_FALSE(stat->isKernelThread);
  }
  EXPECT_TRUE(
      parsePidStat("2 (kthreadd) S 0 0 0 0 -1 2129984 0 0 0 0 0 0 0 0 20 0 1 0 7 0 0 0\n")->isKernelThread);
}

TEST(PidStat, takesNoTextThatIsCutOrGarbled) {
  const std::string whole = "77 (bash)" + std::string(figures);
  const auto firstSafe = whole.find(" 321 ") + 5;
  for (std::size_t length = 0; length < whole.size(); ++length) {
    EXPECT_EQ(parsePidStat(whole.substr(0, length)).has_value(), length >= firstSafe) << length;
  }
  for (const char* text :
       {")77 (", "77 bash S 1", "77 (bash) S a b c d e f g h i j k l m n o p q r s t u v w x y"}) {
    EXPECT_FALSE(parsePidStat(text)) << text;
  }
}

}  // namespace
}  // namespace kestrune::platform
