#include <algorithm>
#include <random>

#include <gmock/gmock.h>

#include "folders/FolderItems.h"

namespace kestrune {
namespace {

using platform::FileLocation;

std::vector<std::string> names(const FolderItems& items) {
  std::vector<std::string> all;
  for (const FolderItem& item : items) all.emplace_back(item.url.name());
  return all;
}

// The expected order: a plain list that is sorted again after each result.
void sort(std::vector<FolderItem>& items) {
  std::ranges::stable_sort(items, std::greater(),
                           [](const FolderItem& item) { return item.sizeBytes.value_or(0); });
}

// Few different sizes, for many ties, and several blocks of rows.
class FolderItemsTest : public testing::Test {
 protected:
  FolderItemsTest() {
    for (int i = 0; i < 3000; ++i) {
      FolderItem item{.url = FileLocation("/d/" + std::to_string(i)), .isDirectory = i % 4 != 0};
      if (!item.isDirectory) item.sizeBytes = size(random);
      listed.push_back(item);
    }
  }

  std::mt19937 random{7};
  std::uniform_int_distribution<std::uint64_t> size{0, 40};
  std::vector<FolderItem> listed;
};

TEST_F(FolderItemsTest, insertionKeepsSortOrder) {
  FolderItems items(listed);
  const FolderItems snapshot = items;
  const auto before = names(snapshot);
  std::vector<FolderItem> reference = listed;
  sort(reference);
  std::vector<std::pair<FolderItems::Rank, FileLocation>> directories;
  for (FolderItems::Rank row = 0; row < items.size(); ++row) {
    if (items[row].isDirectory) directories.emplace_back(row, items[row].url);
  }
  std::ranges::shuffle(directories, random);
  ASSERT_EQ(directories.size(), 2250U);

  std::size_t measured = 0;
  for (const auto& [rank, url] : directories) {
    const std::uint64_t bytes = size(random);
    items.setMeasure(rank, bytes, 1);
    std::ranges::find(reference, url, &FolderItem::url)->sizeBytes = bytes;
    sort(reference);
    ASSERT_EQ(items.measuredDirectoryCount(), ++measured);
    if (measured % 50 != 0 && measured != directories.size()) continue;
    ASSERT_EQ(items.size(), listed.size());
    for (std::size_t row = 0; row < listed.size(); ++row) {
      ASSERT_EQ(items[row].url, reference[row].url) << row << " after " << measured;
      ASSERT_EQ(items[row].sizeBytes, reference[row].sizeBytes);
    }
  }
  EXPECT_TRUE(std::ranges::equal(items, reference, {}, &FolderItem::url, &FolderItem::url));
  EXPECT_EQ(names(snapshot), before) << "a copy does not change";
}

TEST(FolderItems, measuresOnlyUnmeasuredDirectories) {
  FolderItems items({{.url = FileLocation("/d/empty"), .sizeBytes = 0, .childCount = 0},
                     {.url = FileLocation("/d/sub"), .isDirectory = true}});
  items.setMeasure(0, 5, 5);  // a file
  items.setMeasure(7, 5, 5);
  EXPECT_EQ(items.measuredDirectoryCount(), 0U);
  items.setMeasure(1, 9, 2);
  items.setMeasure(1, 1, 1);
  EXPECT_THAT(names(items), testing::ElementsAre("sub", "empty"));
  EXPECT_EQ(items[0].sizeBytes, 9U);
  EXPECT_EQ(items[0].childCount, 2);

  FolderItems none;
  none.setMeasure(0, 1, 1);
  EXPECT_EQ(none.begin(), none.end());
}

}  // namespace
}  // namespace kestrune
