#include <gmock/gmock.h>

#include "ui/ViewFixture.h"
#include "ui/pages/FolderTab.h"

namespace kestrune::ui {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::Pair;

class FolderTabTest : public test::ViewFixture {
 protected:
  FolderTabTest() {
    computer.folders.addFile("/home/test/README", 100 << 10);
    computer.folders.addFile("/home/test/a.txt", 3 << 20);
    computer.folders.addDirectory("/home/test/Big");
    computer.folders.addDirectory("/home/test/Small");
    computer.folders.addFile("/home/test/Big/one.zip", 1 << 20);
    for (const char* name : {"two", "three", ".four"})
      computer.folders.addDirectory(std::string("/home/test/Big/") + name);
  }
  test::MountedViews folderTab() {
    auto views = tab<FolderTab>();
    update(views);
    return views;
  }
  std::string after(test::MountedViews& tab) {
    update(tab);
    return transcriptOf(tab);
  }
  // The entry of that name as a row, made as a window would make it.
  static test::MountedViews entry(const test::MountedViews& tab, const std::string& name) {
    const auto list = *tab.kind<RowsContent>().at(0)->as<RowsContent>();
    for (std::size_t i = 0; i < list.count; ++i) {
      if (test::MountedViews row(list.row(i)); row.hasText(name)) return row;
    }
    ADD_FAILURE() << "no entry is called " << name;
    return test::MountedViews(View());
  }
  static void chooseInMenu(const test::MountedViews& entry, const std::string& title) {
    for (const auto* shown : entry.all()) {
      if (!shown->traits) continue;
      for (const auto& item : shown->traits->contextMenu) {
        if (item.title.string == title) item.action();
      }
    }
  }
};

TEST_F(FolderTabTest, showsSizesAsTheyArrive) {
  showSample();
  auto tab = folderTab();
  computer.folders.complete("/home/test/Big", {.bytes = 12 << 20, .files = 7});
  EXPECT_THAT(after(tab), HasSubstr(R"(
Calculating 1 of 2 folders… =0.5:accent «Sizing progress»
Name Size share Total
(folder.fill):accent Big 7 files =1:accent 12 MB {Open in Finder|Copy Path}
(doc.fill) a.txt =0.25:secondary 3 MB {Reveal in Finder|Copy Path}
)"));
  computer.folders.complete("/home/test/Small", {.bytes = 0, .files = 0});
  EXPECT_THAT(after(tab), Not(HasSubstr("Calculating")));
}

TEST_F(FolderTabTest, leadsThroughFolders) {
  auto tab = folderTab();
  entry(tab, "Big").tap("Big");
  const auto inside = after(tab);
  EXPECT_THAT(inside, HasSubstr("(folder.fill):accent Big ?/home/test/Big / 2 folders · 1 files"));
  EXPECT_THAT(inside, HasSubstr("<(house.fill) Home> (chevron.right) (folder.fill) Big <(arrow.up)> ?Go up"));
  EXPECT_THAT(inside, HasSubstr("File types\nZIP =1:secondary 1 MB")) << "not those of the folder before";
  tab.press("Home");
  EXPECT_THAT(after(tab), HasSubstr("2 folders · 2 files"));
  entry(tab, "Small").tap("Small");
  EXPECT_THAT(after(tab), HasSubstr("This folder is empty"));
  tab.press("(arrow.up)");
  EXPECT_THAT(after(tab), HasSubstr("2 folders · 2 files"));
  tab.kind<RowsContent>().at(0)->as<RowsContent>()->onBack();
  EXPECT_THAT(after(tab), HasSubstr("home ?/home / 0 folders"));
}

TEST_F(FolderTabTest, hiddenFilesAreShownOnRequest) {
  auto tab = folderTab();
  entry(tab, "Big").tap("Big");
  update(tab);
  tab.press("(eye.slash)");
  EXPECT_THAT(after(tab), HasSubstr("3 folders · 1 files"));
  EXPECT_THAT(after(tab), HasSubstr("<(eye)> ?Hide hidden files"));
  computer.folders.addFile("/home/test/Big/new", 1);
  tab.press("(arrow.clockwise)");
  EXPECT_THAT(after(tab), HasSubstr("3 folders · 2 files"));
}

TEST_F(FolderTabTest, entriesHaveAMenu) {
  const auto tab = folderTab();
  chooseInMenu(entry(tab, "a.txt"), "Reveal in Finder");
  chooseInMenu(entry(tab, "Big"), "Open in Finder");
  EXPECT_THAT(computer.workspace.opened, ElementsAre("reveal /home/test/a.txt", "open /home/test/Big"));
  chooseInMenu(entry(tab, "Big"), "Copy Path");
  EXPECT_EQ(pasteboard.copied, "/home/test/Big");
}

TEST_F(FolderTabTest, returningShowsTheLastResultWithoutAScan) {
  folderTab();
  const int scans = computer.folders.listings;
  computer.folders.seesEverything = false;
  auto again = folderTab();
  EXPECT_EQ(computer.folders.listings, scans);
  EXPECT_THAT(transcriptOf(again), HasSubstr("(lock.shield):orange Full Disk Access needed / "));
  again.press("Open Privacy Settings");
  EXPECT_THAT(computer.workspace.panels, ElementsAre(platform::SettingsPanel::fileAccess));
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
