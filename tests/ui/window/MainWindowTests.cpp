#include <gmock/gmock.h>

#include "ui/ViewFixture.h"
#include "ui/pages/CPUTab.h"
#include "ui/window/AboutText.h"
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
  // The titles of the sidebar's rows: all, or the marked ones.
  std::vector<std::string> rows(bool onlyMarked = false) const {
    std::vector<std::string> titles;
    for (const auto* shown : window.all()) {
      const auto* traits = shown->traits.get();
      if (traits == nullptr || !traits->onTap || (onlyMarked && !traits->isSelected)) continue;
      titles.push_back(test::accessibilityLabel(*shown));
    }
    return titles;
  }
  std::vector<std::string> markedRows() const { return rows(true); }
  void setShowsFolderTab(bool shows) {
    preferences.set("ui.sandbox.showFolderTab", shows);
    update(window);
  }
  void post(std::string_view name, const std::any& object = {}) {
    notifications.post(name, object);
    update(window);
  }
};

TEST_F(MainWindowTest, everyTabHasItsRowItsKeyAndItsPage) {
  const std::string sidebar = transcriptOf(window);
  EXPECT_THAT(sidebar, testing::StartsWith(R"(
(square.grid.2x2) Overview «Overview»
(cpu) CPU «CPU»
(memorychip) Memory «Memory»
(internaldrive) Disk «Disk»
(network) Network «Network»
(bolt) Power «Power»
(waveform) Audio «Audio»
(folder) Folders «Folders»
(chart.bar) Stats «Stats»
(gearshape) Settings «Settings»
)"));
  const std::array onItsPage{"ACTIVE",     "Per-core usage", "Memory breakdown", "Volumes",
                             "Interfaces", "Electrical",     "Using Audio Now",  "This folder is empty",
                             "Export CSV", "Launch at login"};
  for (std::size_t i = 0; i < mainTabs.size(); ++i) {
    const MainTabEntry& tab = mainTabs.at(i);
    EXPECT_EQ(static_cast<std::size_t>(tab.tab), i);
    EXPECT_EQ(tab.key, "1234567890"[i]);
    EXPECT_EQ(tab.separatorBefore, tab.tab == MainTab::settings);
    window.tap(tab.title);
    update(window);
    EXPECT_EQ(selected(), tab.tab);
    EXPECT_EQ(view().windowTitle(), tab.title);
    EXPECT_THAT(markedRows(), ElementsAre(tab.title));
    EXPECT_TRUE(window.hasText(onItsPage.at(i))) << tab.title;
  }
  view().selectedTab.set(std::nullopt);
  window.update();
  EXPECT_THAT(markedRows(), IsEmpty());
  EXPECT_EQ(view().windowTitle(), "Kestrune");
}

// Each test checks the texts of the views that it looks at; these stand elsewhere.
TEST_F(MainWindowTest, textsOutsideTheWindowAreInTheCatalogue) {
  for (const MainTabEntry& tab : mainTabs) test::shown(key(std::string(tab.title)));
  for (const char* menu : {"File", "Go", "Help", "Close Window", "About Kestrune", "Quit Kestrune"})
    test::shown(key(menu));
  test::shown(key(std::string(aboutText)));
  EXPECT_EQ(test::shownKeys().size(), mainTabs.size() + 7);
}

TEST_F(MainWindowTest, notificationsSwitchTabs) {
  post(switchTabNotification, MainTab::stats);
  EXPECT_EQ(selected(), MainTab::stats);
  for (const std::any& malformed : {std::any(), std::any(1), std::any(std::string("cpu"))}) {
    post(switchTabNotification, malformed);
    EXPECT_EQ(selected(), MainTab::stats);
  }
  post(openSettingsTabNotification);
  EXPECT_EQ(selected(), MainTab::settings);

  window = MountedViews(View());
  notifications.post(switchTabNotification, MainTab::cpu);  // after the window is gone
  window = mainWindow();
  EXPECT_EQ(selected(), MainTab::overview);
}

TEST_F(MainWindowTest, turningTheFolderTabOffLeavesIt) {
  window.tap("Folders");
  setShowsFolderTab(true);  // written for the first time, but no change
  EXPECT_EQ(selected(), MainTab::folders);
  setShowsFolderTab(false);
  EXPECT_EQ(selected(), MainTab::overview);
  EXPECT_EQ(rows().size(), 10U) << "outside the sandbox it is always listed";

  window.tap("Memory");
  setShowsFolderTab(true);
  setShowsFolderTab(false);
  EXPECT_EQ(selected(), MainTab::memory);
}

TEST_F(MainWindowTest, theSandboxCanHideTheFolderTab) {
  isSandboxed = true;
  window = mainWindow();
  EXPECT_EQ(rows().size(), 10U);
  window.tap("Folders");
  setShowsFolderTab(false);
  EXPECT_EQ(rows().size(), 9U);
  EXPECT_THAT(rows(), Not(Contains("Folders")));
  EXPECT_THAT(markedRows(), ElementsAre("Overview"));

  post(switchTabNotification, MainTab::folders);
  EXPECT_EQ(view().windowTitle(), "Folders");
  EXPECT_TRUE(window.hasText("Hide this tab"));
  EXPECT_THAT(markedRows(), IsEmpty());
}

TEST_F(MainWindowTest, aTickConcernsTheTabAlone) {
  window.tap("CPU");
  const int ofWindow = window.component<MainWindowView>().second;
  const int ofSidebar = window.component<Sidebar>().second;
  const int ofTab = window.component<CPUTab>().second;
  second({10, 20});
  update(window);
  EXPECT_EQ(window.component<MainWindowView>().second, ofWindow);
  EXPECT_EQ(window.component<Sidebar>().second, ofSidebar);
  EXPECT_EQ(window.component<CPUTab>().second, ofTab + 1);
}

}  // namespace
}  // namespace kestrune::ui
