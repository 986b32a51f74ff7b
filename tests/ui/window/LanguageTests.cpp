// Everything that the program can show has a text in the catalogue.

#include <set>

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include "texts/CatalogueData.h"
#include "ui/ViewFixture.h"
#include "ui/window/AboutText.h"

namespace kestrune::ui {
namespace {

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
    if (const auto* file = view.as<FileExportContent>()) note(file->fileKind);
    if (const auto* picker = view.as<SegmentedPickerContent>()) {
      for (const auto& label : picker->labels) note(label);
    }
    if (const auto* alert = view.as<AlertContent>()) {
      note(alert->title);
      note(alert->message);
      for (const auto& choice : alert->choices) note(choice.title);
    }
    if (const auto* list = view.as<RowsContent>()) {
      for (std::size_t i = 0; i < list->count; ++i) noteAll(test::MountedViews(list->row(i)));
    }
  }
  void noteAll(const test::MountedViews& views) {
    for (const auto* shown : views.all()) {
      noteContent(*shown);
      if (!shown->traits) continue;
      if (shown->traits->help) note(*shown->traits->help);
      if (shown->traits->accessibilityLabel) note(*shown->traits->accessibilityLabel);
      note(shown->traits->contextMenu);
    }
  }

  // What a page shows, also after a button of it is pressed.
  void see(MainTab tab, const char* pressed = nullptr) {
    test::MountedViews views(entry(tab).page(context()));
    update(views);
    if (pressed != nullptr) views.press(pressed);
    noteAll(views);
  }
  void seeAll() {
    for (const MainTabEntry& tab : mainTabs) see(tab.tab);
    noteAll(popover());
    noteAll(mainWindow());
  }

  std::set<std::string> keys_;
};

TEST_F(LanguageTest, everyTextIsInTheCatalogue) {
  computer.folders.addFile("/home/test/a.txt", 5);
  computer.folders.addDirectory("/home/test/folder");
  computer.folders.seesEverything = false;
  computer.wifi.interface = platform::WiFiInterface{.name = "wlan0", .isStation = true, .ssid = {}};
  computer.location.authorization = platform::LocationAuthorization::denied;
  for (int i = 0; i < 12; ++i) {
    context();
    second({50, 25});
  }
  seeAll();

  for (const char* metric : {"disk", "network", "ip", "audio"})
    preferences.set("metrics." + std::string(metric) + ".menubar.enabled", true);
  preferences.set("alerts.network.enabled", true);
  keepDay(1, test::sampleDay());
  keepDay(2, {.batteryHealthPercent = 80});
  showSample();
  env->recorder->current.batteryHealthPercent = 90;
  seeAll();
  see(MainTab::settings, "Reset");
  see(MainTab::stats, "Export CSV");
  for (int day = 0; day < 3; ++day) {
    env->shiftSelectedDate(-1);
    see(MainTab::overview);
  }
  env->selectedDate.set(std::nullopt);

  env->recorder->current.batteryHealthPercent = 80;
  env->memory->current.modify([](auto& now) { now.pressure = MemorySnapshot::MemoryPressure::critical; });
  env->battery->current.set({.percent = 100, .isCharging = true, .condition = BatteryCondition::poor});
  env->audio->current.modify([](AudioSnapshot& audio) {
    audio.defaultOutput->isMuted = true;
    audio.activeProcesses.push_back({.name = "Call"});
  });
  seeAll();
  env->battery->current.set({.percent = 100, .isFullyCharged = true});
  env->audio->current.modify([](AudioSnapshot& audio) { audio.activeProcesses.clear(); });
  for (const char* metric : {"cpu", "memory", "disk", "network", "ip"})
    preferences.set("metrics." + std::string(metric) + ".menubar.enabled", false);
  for (const auto status : {NotificationAuthorization::denied, NotificationAuthorization::notDetermined}) {
    computer.notifications.status = status;
    seeAll();
  }
  preferences.set("metrics.audio.menubar.enabled", false);
  isSandboxed = true;
  seeAll();
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
