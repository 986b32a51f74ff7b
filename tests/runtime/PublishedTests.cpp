#include <gtest/gtest.h>

#include "runtime/Published.h"

namespace kestrune {
namespace {

// An evaluation that counts how often it is invalidated.
struct Reader {
  int told = 0;
  Dependencies dependencies{[this] { ++told; }};
};

TEST(Published, comparableValuesNotifyOnlyWhenDifferent) {
  Published<int> number(1);
  Reader reader;
  reader.dependencies.track([&] { return number.get() + *number; });
  number.set(1);
  EXPECT_EQ(reader.told, 0);
  number.set(2);
  number.set(3);
  EXPECT_EQ(reader.told, 1);  // once until the next evaluation
  EXPECT_EQ(reader.dependencies.track([&] { return number.get(); }), 3);
  number.modify([](int& value) { value = 4; });
  EXPECT_EQ(reader.told, 2);
}

TEST(Dependencies, onlyTheLastEvaluationCounts) {
  Published<bool> chooses(true);
  Published<int> left;
  Published<int> right;
  Reader reader;
  const auto evaluate = [&] { reader.dependencies.track([&] { return *chooses ? *left : *right; }); };
  evaluate();
  right.set(1);
  EXPECT_EQ(reader.told, 0);
  chooses.set(false);
  EXPECT_EQ(reader.told, 1);
  EXPECT_TRUE(reader.dependencies.empty());
  evaluate();
  left.set(1);
  EXPECT_EQ(reader.told, 1);
  right.set(2);
  EXPECT_EQ(reader.told, 2);
}

TEST(Dependencies, nestedEvaluationsRecordTheirOwnReads) {
  Published<int> outerRead;
  Published<int> innerRead;
  Published<int> peeked;
  Reader outer;
  Reader inner;
  outer.dependencies.track([&] {
    inner.dependencies.track([&] { return *innerRead; });
    return *outerRead + Dependencies::untracked([&] { return *peeked; });
  });
  const auto told = [&] { return std::pair(outer.told, inner.told); };
  peeked.set(1);
  EXPECT_EQ(told(), std::pair(0, 0));
  innerRead.set(1);
  EXPECT_EQ(told(), std::pair(0, 1));
  outerRead.set(1);
  EXPECT_EQ(told(), std::pair(1, 1));
}

TEST(Dependencies, mayBeDestroyedInCallbacks) {
  Published<int> number;
  std::vector<std::unique_ptr<Dependencies>> readers;
  int told = 0;
  for (int i = 0; i < 3; ++i) {
    readers.push_back(std::make_unique<Dependencies>([&] {
      ++told;
      readers.clear();
    }));
    readers.back()->track([&] { return *number; });
  }
  number.set(1);
  EXPECT_EQ(told, 1);
  EXPECT_TRUE(readers.empty());
  number.set(2);
  EXPECT_EQ(told, 1);
}

TEST(Dependencies, mayOutliveTheirSources) {
  Reader reader;
  std::optional<Published<int>> gone(std::in_place);
  Published<int> stays;
  reader.dependencies.track([&] { return gone->get() + *stays; });
  gone.reset();
  stays.set(1);
  EXPECT_EQ(reader.told, 1);
}

}  // namespace
}  // namespace kestrune
