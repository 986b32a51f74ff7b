#include <string>

#include <gmock/gmock.h>

#include "providers/HistoryRing.h"

namespace kestrune {
namespace {

using testing::ElementsAre;

// A ring for three elements after each letter was appended, the first at second 0.
HistoryRing<char> ringOfThree(const std::string& letters) {
  HistoryRing<char> ring(3);
  double seconds = 0;
  for (const char letter : letters) ring.append({Date{seconds++}, letter});
  return ring;
}

std::string text(const HistoryRing<char>& ring) {
  const auto values = ring.values();
  return {values.begin(), values.end()};
}

TEST(HistoryRing, keepsTheNewestInOrder) {
  const std::string letters = "abcdefg";
  for (std::size_t count = 0; count <= letters.size(); ++count) {
    const auto ring = ringOfThree(letters.substr(0, count));
    const std::size_t dropped = count < 3 ? 0 : count - 3;
    EXPECT_EQ(text(ring), letters.substr(dropped, count - dropped));
    EXPECT_EQ(ring.samples().size(), ring.size());
    for (std::size_t i = 0; i < ring.size(); ++i) {
      EXPECT_EQ(ring[i].value, letters[dropped + i]);
      EXPECT_EQ(ring.samples()[i].date, Date{static_cast<double>(dropped + i)});
    }
  }
}

TEST(HistoryRing, copiesAreIndependent) {
  auto ring = ringOfThree("abcd");
  auto copy = ring;
  ring.append({Date{4}, 'e'});
  EXPECT_EQ(text(copy), "bcd");
  copy.append({Date{4}, 'x'});
  EXPECT_EQ(text(copy), "cdx");
  EXPECT_EQ(text(ring), "cde");
}

TEST(HistoryRing, neverReallocates) {
  HistoryRing<double> original(1000);
  for (HistoryRing<double> ring : {original, HistoryRing<double>(1000)}) {
    ring.append({});
    const auto* storage = &ring[0];
    for (int i = 1; i < 2000; ++i) ring.append({});
    EXPECT_EQ(&ring[0], storage);
  }
}

}  // namespace
}  // namespace kestrune
