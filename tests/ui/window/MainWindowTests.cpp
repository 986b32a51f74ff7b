#include <gmock/gmock.h>

#include "ui/ViewFixture.h"
#include "ui/window/Sidebar.h"

namespace kestrune::ui {
namespace {

using test::MountedViews;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

class MainWindowTest : public test::ViewFixture {
 public:
  MountedViews window = mainWindow();

  MainWindowView& view() const { return *window.component<MainWindowView>().first; }
  std::optional<MainTab> selected() const { return view().selectedTab.get(); }

  struct Row {
    std::string title;
    const Traits* traits;
  };
  std::vector<Row> rows() const {
    std::vector<Row> found;
    for (const auto& shown : window.all()) {
      const auto* traits = shown.view->traits.get();
      if (traits != nullptr && traits->onTap)
        found.push_back({test::accessibilityLabel(*shown.view), traits});
    }
    return found;
  }
  std::vector<std::string> rowTitles() const {
    std::vector<std::string> titles;
    for (const auto& row : rows()) titles.push_back(row.title);
    return titles;
  }
  std::vector<std::string> markedRows() const {
    std::vector<std::string> marked;
    for (const auto& row : rows()) {
      if (row.traits->isSelected) marked.push_back(row.title);
    }
    return marked;
  }
  void setShowsFolderTab(bool shows) {
    preferences.set("ui.sandbox.showFolderTab", shows);
    update(window);
  }
  void post(std::string_view name, const std::any& object = {}) {
    notifications.post(name, object);
    update(window);
  }
};

class SandboxedMainWindowTest : public MainWindowTest {
 public:
  SandboxedMainWindowTest() {
    isSandboxed = true;
    window = mainWindow();
  }
};

TEST_F(MainWindowTest, ATapSelectsAndMarksOneRow) {
  EXPECT_THAT(markedRows(), ElementsAre("Overview"));
  window.tap("Disk");
  EXPECT_EQ(selected(), MainTab::disk);
  EXPECT_THAT(markedRows(), ElementsAre("Disk"));
  EXPECT_EQ(view().windowTitle(), "Disk");

  view().selectedTab.set(std::nullopt);
  window.update();
  EXPECT_THAT(markedRows(), IsEmpty());
  EXPECT_EQ(view().windowTitle(), "Kestrune");
}

TEST_F(MainWindowTest, NotificationsSwitchTabs) {
  post(switchTabNotification, MainTab::stats);
  EXPECT_EQ(selected(), MainTab::stats);
  for (const std::any& malformed : {std::any(), std::any(1), std::any(std::string("cpu"))}) {
    post(switchTabNotification, malformed);
    EXPECT_EQ(selected(), MainTab::stats);
  }
  post(openSettingsTabNotification);
  EXPECT_EQ(selected(), MainTab::settings);

  window = MountedViews(View());
  notifications.post(switchTabNotification, MainTab::cpu);  // nobody is there any more
  window = mainWindow();
  EXPECT_EQ(selected(), MainTab::overview);
}

TEST_F(MainWindowTest, TurningTheFolderTabOffLeavesIt) {
  window.tap("Folders");
  setShowsFolderTab(true);  // written for the first time, but no change
  EXPECT_EQ(selected(), MainTab::folders);
  setShowsFolderTab(false);
  EXPECT_EQ(selected(), MainTab::overview);
  EXPECT_EQ(rowTitles().size(), 10U) << "outside the sandbox it is always listed";

  window.tap("Memory");
  setShowsFolderTab(true);
  setShowsFolderTab(false);
  EXPECT_EQ(selected(), MainTab::memory);
}

TEST_F(SandboxedMainWindowTest, TheFolderTabCanBeHidden) {
  EXPECT_EQ(rowTitles().size(), 10U);
  window.tap("Folders");
  setShowsFolderTab(false);
  EXPECT_EQ(rowTitles().size(), 9U);
  EXPECT_THAT(rowTitles(), Not(Contains("Folders")));
  EXPECT_THAT(markedRows(), ElementsAre("Overview"));

  post(switchTabNotification, MainTab::folders);
  EXPECT_EQ(view().windowTitle(), "Folders");
  EXPECT_TRUE(window.hasText("Hide this tab"));
  EXPECT_THAT(markedRows(), IsEmpty());
}

TEST_F(MainWindowTest, ATickConcernsTheTabAlone) {
  window.tap("CPU");
  const int window1 = window.component<MainWindowView>().second;
  const int sidebar1 = window.component<Sidebar>().second;
  const int tab1 = window.component<CPUTab>().second;
  second({10, 20});
  update(window);
  EXPECT_EQ(window.component<MainWindowView>().second, window1);
  EXPECT_EQ(window.component<Sidebar>().second, sidebar1);
  EXPECT_EQ(window.component<CPUTab>().second, tab1 + 1);
}

}  // namespace
}  // namespace kestrune::ui
