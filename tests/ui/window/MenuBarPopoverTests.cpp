#include <gmock/gmock.h>

#include "ui/ViewFixture.h"
#include "ui/components/StatusColors.h"
#include "ui/window/MenuBarPopover.h"

namespace kestrune::ui {
namespace {

using testing::ElementsAre;

class MenuBarPopoverTest : public test::ViewFixture {
 protected:
  test::MountedViews popover() {
    const MenuBarPopover::Commands commands{[this] { ++opened; }, [this] { ++terminated; }};
    return test::MountedViews(component<MenuBarPopover>(
        [given = context(), commands] { return std::make_shared<MenuBarPopover>(given, commands); }));
  }
  void show(const char* metric, bool isShown) {
    preferences.set(std::string("metrics.") + metric + ".menubar.enabled", isShown);
  }

  int opened = 0;
  int terminated = 0;
};

TEST_F(MenuBarPopoverTest, showsWhatIsChosen) {
  auto view = popover();
  for (const auto* metric : {"cpu", "memory", "processes"}) show(metric, false);
  for (const auto* metric : {"disk", "network", "ip", "audio"}) show(metric, true);
  update(view);
  EXPECT_THAT(view.texts(), ElementsAre("Disk", "▲ 2.0 MB/s  ▼ 0 B/s", "Network", "▲ 0 B/s  ▼ 0 B/s", "IP",
                                        "—", "Audio", "—", "Open main window", "Settings…", "Quit Kestrune"));
  for (const auto* metric : {"disk", "network", "ip", "audio"}) show(metric, false);
  show("processes", true);
  update(view);
  EXPECT_TRUE(view.hasText("No metrics selected — enable some in Settings."));
  EXPECT_TRUE(view.hasText("Top processes"));
}

TEST_F(MenuBarPopoverTest, aFullDiskIsColoured) {
  show("disk", true);
  auto view = popover();
  const auto colour = [&](std::uint64_t used) {
    env->disk->current.modify([&](DiskSnapshot& disk) {
      disk.volumeTotalBytes = 10;
      disk.volumeUsedBytes = used;
    });
    update(view);
    return view.text("▲ 2.0 MB/s  ▼ 0 B/s").foreground;
  };
  EXPECT_EQ(colour(8), Color(ColorRole::primary));
  EXPECT_EQ(colour(9), statusWarningColor);
  EXPECT_EQ(colour(10), statusCriticalColor);
}

TEST_F(MenuBarPopoverTest, itsCommandsDoWhatTheySay) {
  auto view = popover();
  int settings = 0;
  const auto seen =
      notifications.observe(std::string(openSettingsTabNotification), [&](const std::any&) { ++settings; });
  view.press("Open main window");
  EXPECT_EQ(std::pair(opened, settings), std::pair(1, 0));
  view.press("Settings…");
  EXPECT_EQ(std::pair(opened, settings), std::pair(2, 1));
  view.press("Quit Kestrune");
  EXPECT_EQ(terminated, 1);
}

TEST(AudioSummary, saysWhatPlaysElseHowLoudItWouldBe) {
  AudioSnapshot audio;
  audio.activeProcesses = {{.id = "a", .name = "Player"}};
  EXPECT_EQ(test::shown(audioSummary(audio)), "—");
  audio.defaultOutput = AudioSnapshot::Device{.name = "Speaker", .volume = 0.459F, .isMuted = true};
  EXPECT_EQ(test::shown(audioSummary(audio)), "Player");
  audio.activeProcesses.push_back({.id = "b", .name = "Browser"});
  audio.activeProcesses.push_back({.id = "c", .name = "Call"});
  EXPECT_EQ(test::shown(audioSummary(audio)), "Player · Browser");
  audio.activeProcesses.clear();
  EXPECT_EQ(test::shown(audioSummary(audio)), "Speaker  Muted");
  audio.defaultOutput->isMuted = false;
  EXPECT_EQ(test::shown(audioSummary(audio)), "Speaker  45%");
  audio.defaultOutput->volume = -1;
  EXPECT_EQ(test::shown(audioSummary(audio)), "Speaker");
}

}  // namespace
}  // namespace kestrune::ui
