#include <string>

#include <gmock/gmock.h>

#include "providers/HistoryRing.h"

namespace kestrune {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

HistoryRing<std::string> ringOfThree(const std::vector<std::string>& values) {
  HistoryRing<std::string> ring(3);
  double seconds = 0;
  for (const auto& value : values) ring.append({Date{seconds++}, value});
  return ring;
}

std::vector<std::string> stored(const HistoryRing<std::string>& ring) {
  std::vector<std::string> values;
  for (const auto& sample : ring.buffer()) values.push_back(sample.value);
  return values;
}

TEST(HistoryRing, yieldsWhatItHoldsInOrderWhileItFills) {
  EXPECT_THAT(ringOfThree({}).samples(), IsEmpty());
  EXPECT_THAT(ringOfThree({"a", "b"}).values(), ElementsAre("a", "b"));

  const auto justFull = ringOfThree({"a", "b", "c"});
  EXPECT_THAT(justFull.values(), ElementsAre("a", "b", "c"));
}

TEST(HistoryRing, overwritesTheOldestAndStaysInOrder) {
  const auto four = ringOfThree({"a", "b", "c", "d"});
  EXPECT_THAT(stored(four), ElementsAre("d", "b", "c"));
  EXPECT_EQ(four.head(), 1U);
  EXPECT_THAT(four.values(), ElementsAre("b", "c", "d"));
  EXPECT_EQ(four[0].value, "b");

  const auto six = ringOfThree({"a", "b", "c", "d", "e", "f"});
  EXPECT_THAT(six.values(), ElementsAre("d", "e", "f"));

  const auto samples = four.samples();
  ASSERT_EQ(samples.size(), 3U);
  EXPECT_EQ(samples[0].date, Date{1});
  EXPECT_EQ(samples[2].date, Date{3});
}

TEST(HistoryRing, copyKeepsItsContentsAndGrowsOnItsOwn) {
  auto ring = ringOfThree({"a", "b", "c", "d"});
  auto copy = ring;
  ring.append({Date{4}, "e"});
  EXPECT_THAT(copy.values(), ElementsAre("b", "c", "d"));

  copy.append({Date{4}, "x"});
  EXPECT_THAT(copy.values(), ElementsAre("c", "d", "x"));
  EXPECT_THAT(ring.values(), ElementsAre("c", "d", "e"));
}

TEST(HistoryRing, neverMovesItsStorage) {
  HistoryRing<double> ring(1000);
  HistoryRing<double> copy = ring;
  const auto* storage = ring.buffer().data();
  const auto* copiedStorage = copy.buffer().data();
  for (int i = 0; i < 2500; ++i) {
    ring.append({Date{}, 0});
    copy.append({Date{}, 0});
  }
  EXPECT_EQ(ring.buffer().data(), storage);
  EXPECT_EQ(copy.buffer().data(), copiedStorage);
}

}  // namespace
}  // namespace kestrune
