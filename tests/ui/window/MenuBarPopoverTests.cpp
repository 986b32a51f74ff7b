#include <gmock/gmock.h>

#include "ui/ViewFixture.h"
#include "ui/window/MenuBarLabel.h"

namespace kestrune::ui {
namespace {

using testing::HasSubstr;

constexpr std::array metrics{"cpu", "memory", "disk", "network", "ip", "audio", "processes"};

class MenuBarPopoverTest : public test::ViewFixture {
 protected:
  MenuBarPopoverTest() { showSample(); }
  void show(const std::string& metric, bool isShown) {
    preferences.set("metrics." + metric + ".menubar.enabled", isShown);
  }
};

TEST_F(MenuBarPopoverTest, showsWhatIsChosen) {
  const std::string commands = "<Open main window>\n<Settings…>\n<Quit Kestrune>\n";
  const std::string none = "No metrics selected — enable some in Settings.\n";
  const std::vector<std::string> rows{"CPU 13% ~1 0:accent \"\" «Metric trend»\n",
                                      "Memory 12.0 GB:orange ~0 1:accent \"\" «Metric trend»\n",
                                      "Disk ▲ 5.0 KB/s  ▼ 6.0 KB/s\n",
                                      "Network ▲ 2.0 KB/s  ▼ 8.0 KB/s\n",
                                      "IP 10.0.0.7\n",
                                      "Audio Player · Recorder\n",
                                      none + "Top processes\neditor 45.6%\ncompiler 6.1%\n"};
  auto view = popover();
  EXPECT_EQ(transcriptOf(view), "\n" + rows[0].substr(0, rows[0].size() - 1) + " / " + rows[1] +
                                    rows[6].substr(none.size()) + commands);
  for (std::size_t shown = 0; shown < metrics.size(); ++shown) {
    for (const auto* metric : metrics) show(metric, metric == metrics.at(shown));
    view.update();
    EXPECT_EQ(transcriptOf(view), "\n" + rows.at(shown) + commands);
  }
}

TEST_F(MenuBarPopoverTest, listsThreeProcesses) {
  env->cpu->current.modify([](CPUSnapshot& now) { now.topProcesses.resize(4, {.name = "more"}); });
  EXPECT_THAT(transcriptOf(popover()), HasSubstr("compiler 6.1%\nmore 0.0%\n<Open"));
}

TEST_F(MenuBarPopoverTest, aFullDiskIsColoured) {
  show("disk", true);
  auto view = popover();
  const auto row = [&](std::uint64_t used) {
    env->disk->current.set({.volumeTotalBytes = 10, .volumeUsedBytes = used});
    view.update();
    return transcriptOf(view);
  };
  EXPECT_THAT(row(8), HasSubstr("Disk ▲ 0 B/s  ▼ 0 B/s\n"));
  EXPECT_THAT(row(9), HasSubstr("Disk ▲ 0 B/s  ▼ 0 B/s:orange\n"));
  EXPECT_THAT(row(10), HasSubstr("Disk ▲ 0 B/s  ▼ 0 B/s:red\n"));
}

TEST_F(MenuBarPopoverTest, runsItsCommands) {
  auto view = popover();
  int settings = 0;
  const auto seen =
      notifications.observe(std::string(openSettingsTabNotification), [&](const std::any&) { ++settings; });
  view.press("Open main window");
  EXPECT_EQ(std::pair(timesOpened, settings), std::pair(1, 0));
  view.press("Settings…");
  EXPECT_EQ(std::pair(timesOpened, settings), std::pair(2, 1));
  view.press("Quit Kestrune");
  EXPECT_EQ(timesQuit, 1);
}

TEST_F(MenuBarPopoverTest, theLabelShowsTheSlowerLoad) {
  env->cpu->menuBarUsagePercent.set(34.4);
  EXPECT_EQ(MenuBarLabel{*env->cpu}.load(formats), "34%");
}

TEST_F(MenuBarPopoverTest, soundNamesWhatPlaysElseTheVolume) {
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
