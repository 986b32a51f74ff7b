// Everything that the program can show has a text in the catalogue.

#include <set>

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include "history/DailySummaryJson.h"
#include "texts/CatalogueData.h"
#include "ui/ViewFixture.h"
#include "ui/pages/AudioTab.h"
#include "ui/pages/DiskTab.h"
#include "ui/pages/FolderTab.h"
#include "ui/pages/MemoryTab.h"
#include "ui/pages/NetworkTab.h"
#include "ui/pages/overview/OverviewTab.h"
#include "ui/pages/PowerTab.h"
#include "ui/pages/SettingsTab.h"
#include "ui/pages/StatsTab.h"
#include "ui/window/MenuBarPopover.h"
#include "ui/window/AboutText.h"

namespace kestrune::ui {
namespace {

using namespace std::chrono_literals;
using platform::NotificationAuthorization;

class LanguageTest : public test::ViewFixture {
 protected:
  void note(const TextContent& content) {
    if (content.isKey && !content.string.empty()) keys_.insert(content.string);
  }
  void note(const std::vector<MenuItem>& items) {
    for (const auto& item : items) note(item.title);
  }
  void note(const ReadOut& readOut) {
    if (!readOut) return;
    for (const auto& part : readOut(0)) note(part);
  }

  void noteContent(const View& view) {
    if (const auto* text = view.as<TextContent>()) note(*text);
    if (const auto* menu = view.as<MenuContent>()) note(menu->items);
    if (const auto* chart = view.as<LineChartContent>()) note(chart->readOut);
    if (const auto* chart = view.as<DayChartContent>()) note(chart->readOut);
    if (const auto* picker = view.as<SegmentedPickerContent>()) {
      for (const auto& label : picker->labels) note(label);
    }
    if (const auto* alert = view.as<AlertContent>()) {
      note(alert->title);
      note(alert->message);
      for (const auto& choice : alert->choices) note(choice.title);
    }
    if (const auto* file = view.as<FileExportContent>()) note(file->fileKind);
    if (const auto* list = view.as<RowsContent>()) {
      for (std::size_t i = 0; i < list->count; ++i) noteAll(test::MountedViews(list->row(i)));
    }
  }

  void noteAll(const test::MountedViews& views) {
    for (const auto& shown : views.all()) {
      noteContent(*shown.view);
      if (!shown.view->traits) continue;
      if (shown.view->traits->help) note(*shown.view->traits->help);
      if (shown.view->traits->accessibilityLabel) note(*shown.view->traits->accessibilityLabel);
      note(shown.view->traits->contextMenu);
    }
  }
  template <class Tab>
  test::MountedViews see() {
    auto views = tab<Tab>();
    update(views);
    noteAll(views);
    return views;
  }
  void seeAllTabs() {
    see<OverviewTab>();
    see<CPUTab>();
    see<MemoryTab>();
    see<DiskTab>();
    see<NetworkTab>();
    see<PowerTab>();
    see<AudioTab>();
    see<FolderTab>();
    see<StatsTab>();
    see<SettingsTab>();
  }

  std::set<std::string> keys_;
};

TEST_F(LanguageTest, everyTextIsInTheCatalogue) {
  computer.folders.addFile("/home/test/a.txt", 5);
  computer.folders.addDirectory("/home/test/folder");
  computer.folders.seesEverything = false;
  computer.wifi.interface = platform::WiFiInterface{.name = "wlan0", .isStation = true, .ssid = {}};
  computer.location.authorization = platform::LocationAuthorization::denied;
  computer.networkInterfaces.setLink("en0", 1, 1);
  noteAll(mainWindow());
  computer.processors.pass(100, {0, 0});
  for (int i = 0; i < 12; ++i) second({50, 25});
  seeAllTabs();

  // Other states of the same pages.
  const Date yesterday =
      *computer.calendar.addingDays(computer.calendar.startOfDay(computer.clock.now()), -1);
  DailySummary day{.date = yesterday, .batteryHealthPercent = 80};
  day.hours.push_back({.hour = 9});
  day.networkSSIDs = {{"Ethernet", {}}, {"Home", {}}};
  computer.historyFolder.files[env->dayFiles.name(yesterday)] = encodeDay(day).text;
  env->recorder->current.networkSSIDs = day.networkSSIDs;
  env->recorder->current.batteryHealthPercent = 90;
  preferences.set("alerts.network.enabled", true);
  const AudioSnapshot::Device device{
      .id = 1, .name = "Speaker", .volume = 0.5F, .isMuted = true, .channelCount = 2};
  env->audio->current.set(
      {.defaultOutput = device,
       .defaultInput = device,
       .allOutputDevices = {device},
       .allInputDevices = {device},
       .activeProcesses = {{.id = "a", .name = "A", .usesInput = true, .usesOutput = true},
                           {.id = "b", .name = "B"},
                           {.id = "c", .name = "C"}}});
  env->battery->current.set({.percent = 100, .isCharging = true, .condition = BatteryCondition::poor});
  seeAllTabs();
  see<SettingsTab>().press("Reset");
  env->battery->current.set({.percent = 100, .isFullyCharged = true, .condition = BatteryCondition::fair});
  see<PowerTab>();
  auto memory = *env->memory->current;
  memory.pressure = MemorySnapshot::MemoryPressure::critical;
  env->memory->current.set(memory);
  env->shiftSelectedDate(-1);
  see<OverviewTab>();
  env->shiftSelectedDate(-1);
  see<OverviewTab>();
  for (const auto status : {NotificationAuthorization::denied, NotificationAuthorization::notDetermined}) {
    computer.notifications.status = status;
    see<SettingsTab>();
  }
  auto stats = see<StatsTab>();
  stats.press("Export CSV");
  noteAll(stats);
  auto settings = see<SettingsTab>();
  settings.press("Reset");
  noteAll(settings);

  for (const char* key : {"metrics.disk.menubar.enabled", "metrics.network.menubar.enabled",
                          "metrics.ip.menubar.enabled", "metrics.audio.menubar.enabled"}) {
    preferences.set(key, true);
  }
  const auto popover = [this] {
    return test::MountedViews(component<MenuBarPopover>([given = context()] {
      return std::make_shared<MenuBarPopover>(given, MenuBarPopover::Commands{[] {}, [] {}});
    }));
  };
  noteAll(popover());
  for (const char* key : {"cpu", "memory", "disk", "network", "ip", "audio"}) {
    preferences.set("metrics." + std::string(key) + ".menubar.enabled", false);
  }
  noteAll(popover());
  isSandboxed = true;
  seeAllTabs();
  for (const MainTabEntry& tab : mainTabs) keys_.insert(std::string(tab.title));
  keys_.insert(std::string(aboutText));
  for (const char* menu : {"File", "Go", "Help", "Close Window", "About Kestrune", "Quit Kestrune"})
    keys_.insert(menu);

  EXPECT_GT(keys_.size(), 200U);
  const auto catalogue = nlohmann::json::parse(catalogueData());
  for (const std::string& key : keys_) EXPECT_TRUE(catalogue.contains(key)) << '"' << key << '"';
}

}  // namespace
}  // namespace kestrune::ui
