#include <gmock/gmock.h>

#include "ui/ViewFixture.h"
#include "ui/pages/FolderTab.h"

namespace kestrune::ui {
namespace {

using testing::ElementsAre;
using testing::IsSupersetOf;
using testing::Pair;

class FolderTabTest : public test::ViewFixture {
 protected:
  FolderTabTest() {
    computer.folders.addFile("/home/test/README", 100);
    computer.folders.addFile("/home/test/a.txt", 3 << 20);
    computer.folders.addDirectory("/home/test/Big");
    computer.folders.addDirectory("/home/test/Small");
    computer.folders.addFile("/home/test/Big/inside", 1);
  }
  test::MountedViews folderTab() {
    auto views = tab<FolderTab>();
    update(views);
    return views;
  }
  // The entries as rows, made as a window would make them.
  static std::vector<test::MountedViews> entries(const test::MountedViews& tab) {
    const auto lists = tab.kind<RowsContent>();
    std::vector<test::MountedViews> made;
    if (lists.empty()) return made;
    const auto& content = *lists.front().view->as<RowsContent>();
    for (std::size_t i = 0; i < content.count; ++i) made.emplace_back(content.row(i));
    return made;
  }
  static std::vector<std::string> names(const test::MountedViews& tab) {
    std::vector<std::string> found;
    for (const auto& entry : entries(tab)) found.push_back(entry.texts().front());
    return found;
  }
  static std::vector<MenuItem> menuOf(const test::MountedViews& entry) {
    for (const auto& shown : entry.all()) {
      if (shown.view->traits && !shown.view->traits->contextMenu.empty())
        return shown.view->traits->contextMenu;
    }
    return {};
  }
};

TEST_F(FolderTabTest, showsTheListAtOnceAndSizesAsTheyComeIn) {
  auto tab = folderTab();
  EXPECT_THAT(tab.texts(),
              IsSupersetOf({"Home", "2 folders · 2 files", "Calculating 0 of 2 folders…", "Name"}));
  EXPECT_THAT(names(tab), ElementsAre("a.txt", "README", "Big", "Small"));
  EXPECT_THAT(entries(tab)[2].texts(), ElementsAre("Big", "")) << "not measured yet";

  computer.folders.complete("/home/test/Big", {.bytes = 12 << 20, .files = 7});
  update(tab);
  EXPECT_THAT(names(tab), ElementsAre("Big", "a.txt", "README", "Small"));
  EXPECT_THAT(entries(tab)[0].texts(), ElementsAre("Big", "7 files", "12 MB"));
  EXPECT_EQ(entries(tab)[0].kind<BarContent>().front().view->as<BarContent>()->fraction, 1);
  EXPECT_EQ(entries(tab)[1].kind<BarContent>().front().view->as<BarContent>()->fraction, 0.25);
}

TEST_F(FolderTabTest, entriesHaveAMenu) {
  auto tab = folderTab();
  const auto choose = [](const std::vector<MenuItem>& menu, std::size_t item, const std::string& title) {
    ASSERT_EQ(menu.at(item).title.string, title);
    menu.at(item).action();
  };
  const auto rows = entries(tab);
  choose(menuOf(rows[0]), 0, "Reveal in Finder");
  choose(menuOf(rows[2]), 0, "Open in Finder");
  EXPECT_THAT(computer.workspace.opened, ElementsAre("reveal /home/test/a.txt", "open /home/test/Big"));
  choose(menuOf(rows[2]), 1, "Copy Path");
  EXPECT_EQ(pasteboard.copied, "/home/test/Big");
}

TEST_F(FolderTabTest, returningShowsTheLastResultWithoutAScan) {
  folderTab();
  const int scans = computer.folders.listings;
  computer.folders.seesEverything = false;
  const auto again = folderTab();
  EXPECT_EQ(computer.folders.listings, scans);
  EXPECT_THAT(again.texts(), IsSupersetOf({"Full Disk Access needed", "Open Privacy Settings"}));
}

TEST_F(FolderTabTest, theSandboxOffersToHideIt) {
  isSandboxed = true;
  auto tab = this->tab<FolderTab>();
  EXPECT_EQ(computer.folders.listings, 0);
  tab.press("Dismiss");
  EXPECT_FALSE(tab.hasText("Folder browser unavailable"));
  tab.press("Hide this tab");
  EXPECT_EQ(computer.preferences.stored.at("ui.sandbox.showFolderTab"), platform::PreferenceValue(false));
}

TEST(LargestFileTypes, addsUpByExtension) {
  std::vector<FolderItem> listed;
  const auto add = [&listed](const char* name, std::uint64_t size) {
    listed.push_back(
        {.url = platform::FileLocation(std::string("/x/") + name), .sizeBytes = size, .childCount = 0});
  };
  for (const char* name : {"a.txt", "b.TXT", "README", "Makefile", ".hidden", "dot.", "photo.jpeg"})
    add(name, 10);
  add("empty.zip", 0);
  listed.push_back({.url = platform::FileLocation("/x/folder.d"), .sizeBytes = 999, .isDirectory = true});
  EXPECT_THAT(largestFileTypes(FolderItems(listed)),
              ElementsAre(Pair("—", 40), Pair("TXT", 20), Pair("JPEG", 10)));
  for (const char* name : {"1.a", "2.b", "3.c"}) add(name, 15);
  EXPECT_EQ(largestFileTypes(FolderItems(listed)).size(), 5U);
}

}  // namespace
}  // namespace kestrune::ui
