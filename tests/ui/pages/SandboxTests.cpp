// What the sandbox withholds, on every page.

#include <gmock/gmock.h>

#include "ui/ViewFixture.h"
#include "ui/pages/CPUTab.h"
#include "ui/pages/FolderTab.h"
#include "ui/pages/MemoryTab.h"
#include "ui/pages/SettingsTab.h"
#include "ui/pages/overview/OverviewTab.h"

namespace kestrune::ui {
namespace {

using testing::HasSubstr;
using testing::Not;

class SandboxTest : public test::ViewFixture {
 protected:
  SandboxTest() {
    isSandboxed = true;
    keepDay(1, test::sampleDay());
    showSample();
  }
  // The page has a banner instead of the entries, and "Dismiss" hides that for good.
  template <class Tab>
  void expectBanner(const std::string& title, const char* reason, const char* withheld) {
    preferences.set("ui.sandbox.showHints", true);
    auto one = tab<Tab>();
    auto other = tab<Tab>();
    update(one);
    EXPECT_THAT(transcriptOf(one),
                HasSubstr("(lock.shield.fill):orange " + title + " / " + reason + "\n<Dismiss>"));
    EXPECT_THAT(transcriptOf(one), Not(HasSubstr(withheld)));
    one.press("Dismiss");
    update(other);
    EXPECT_FALSE(one.hasText(title));
    EXPECT_FALSE(other.hasText(title));
    EXPECT_EQ(computer.preferences.stored.at("ui.sandbox.showHints"), platform::PreferenceValue(false));
  }
};

TEST_F(SandboxTest, pagesWithholdWhatTheyCannotRead) {
  const char* title = "Top processes unavailable";
  const char* both = "App Store does not allow access to per-process CPU and memory data.";
  expectBanner<CPUTab>(title, "App Store does not allow access to per-process CPU data.", "editor");
  expectBanner<MemoryTab>(title, "App Store does not allow access to per-process memory data.", "browser");
  expectBanner<OverviewTab>(title, both, "editor");
  env->shiftSelectedDate(-1);
  expectBanner<OverviewTab>(title, both, "editor");
  expectBanner<FolderTab>("Folder browser unavailable", "App Store restricts filesystem access.", "Volume");
  EXPECT_EQ(computer.folders.listings, 0);
}

TEST_F(SandboxTest, thePopoverListsNoProcesses) {
  EXPECT_FALSE(popover().hasText("Top processes"));
}

TEST_F(SandboxTest, theFolderTabOffersToHideIt) {
  tab<FolderTab>().press("Hide this tab");
  EXPECT_EQ(computer.preferences.stored.at("ui.sandbox.showFolderTab"), platform::PreferenceValue(false));
}

TEST_F(SandboxTest, settingsTurnProcessesOffAndOfferTheHints) {
  const auto settings = page<SettingsTab>();
  EXPECT_THAT(settings, HasSubstr("Top processes [off] «Top processes» !off"));
  EXPECT_THAT(settings, HasSubstr("hints [on] «Show App Store upgrade hints»\n"
                                  "(folder) Show Folders tab [on] «Show Folders tab»\n"));
  EXPECT_EQ(computer.preferences.stored.at("metrics.processes.menubar.enabled"),
            platform::PreferenceValue(false));
}

}  // namespace
}  // namespace kestrune::ui
