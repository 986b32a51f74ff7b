#include <gmock/gmock.h>

#include "ui/ViewFixture.h"
#include "ui/pages/SettingsTab.h"

namespace kestrune::ui {
namespace {

using namespace std::chrono_literals;
using platform::NotificationAuthorization;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

class SettingsTabTest : public test::ViewFixture {
 protected:
  test::MountedViews settings() {
    auto views = tab<SettingsTab>();
    update(views);
    return views;
  }
  template <class C>
  static C control(const test::MountedViews& tab, const std::string& label) {
    for (const auto* shown : tab.kind<C>()) {
      if (test::accessibilityLabel(*shown) == label) return *shown->template as<C>();
    }
    ADD_FAILURE() << "nothing is called " << label;
    return {};
  }
  static void turn(test::MountedViews& tab, const std::string& label, bool isOn) {
    control<SwitchContent>(tab, label).onChange(isOn);
    tab.update();
  }
  platform::PreferenceMap& stored() { return computer.preferences.stored; }
};

TEST_F(SettingsTabTest, everySwitchStoresItsSetting) {
  // The row after the key is there while the switch is on.
  const std::tuple<const char*, const char*, const char*> switches[] = {
      {"CPU usage", "metrics.cpu.menubar.enabled", nullptr},
      {"Memory usage", "metrics.memory.menubar.enabled", nullptr},
      {"Disk activity", "metrics.disk.menubar.enabled", nullptr},
      {"Network throughput", "metrics.network.menubar.enabled", nullptr},
      {"IP address", "metrics.ip.menubar.enabled", nullptr},
      {"Audio output", "metrics.audio.menubar.enabled", nullptr},
      {"Top processes", "metrics.processes.menubar.enabled", nullptr},
      {"CPU high usage", "alerts.cpu.enabled", "[50..99/5 80] «CPU high usage» 80%\n"},
      {"Memory pressure", "alerts.memory.enabled", "{*Warning or higher|Critical only}\n"},
      {"Low disk space", "alerts.disk.enabled", "{5% free|*10% free|15% free|20% free}\n"},
      {"Daily data usage", "alerts.network.enabled",
       "Alert at {1 GB|2 GB|*5 GB|10 GB|20 GB|50 GB} 5 GB (chevron.down)\n"},
      {"Enable alerts", "alerts.master.enabled", "CPU high usage"}};
  auto tab = settings();
  for (const auto& [label, key, row] : switches) {
    const bool isOnAtFirst = control<SwitchContent>(tab, label).isOn;
    for (const bool isOn : {!isOnAtFirst, isOnAtFirst}) {
      turn(tab, label, isOn);
      EXPECT_EQ(stored().at(key), platform::PreferenceValue(isOn)) << label;
      EXPECT_EQ(control<SwitchContent>(tab, label).isOn, isOn) << label;
      EXPECT_TRUE(row == nullptr || (transcriptOf(tab).find(row) != std::string::npos) == isOn) << label;
    }
  }
  EXPECT_EQ(stored().size(), std::size(switches));
}

TEST_F(SettingsTabTest, everyChoiceStoresItsValue) {
  auto tab = settings();
  turn(tab, "Daily data usage", true);
  tab.choose("Critical only");
  tab.choose("20% free");
  tab.choose("90 days");
  tab.chooseMenuItem("20 GB");
  control<SliderContent>(tab, "CPU high usage").onChange(95);
  tab.update();
  EXPECT_EQ(stored().at("alerts.memory.threshold"), platform::PreferenceValue(std::string("critical")));
  EXPECT_EQ(stored().at("alerts.disk.threshold"), platform::PreferenceValue(std::int64_t{20}));
  EXPECT_EQ(stored().at("history.retentionDays"), platform::PreferenceValue(std::int64_t{90}));
  EXPECT_EQ(stored().at("alerts.network.dailyGB"), platform::PreferenceValue(std::int64_t{20}));
  EXPECT_EQ(stored().at("alerts.cpu.threshold"), platform::PreferenceValue(95.0));
  EXPECT_TRUE(tab.hasText("95%"));
  preferences.set("alerts.disk.threshold", std::int64_t{12});
  tab.update();
  EXPECT_THAT(transcriptOf(tab), HasSubstr("{5% free|10% free|15% free|20% free}"));
}

TEST_F(SettingsTabTest, theLanguageIsChangedByARestart) {
  shell.language = "es";
  auto tab = settings();
  EXPECT_THAT(transcriptOf(tab), HasSubstr("(globe) Language {EN|*ES}"));
  tab.choose("EN");
  EXPECT_EQ(stored().at("AppleLanguages"), platform::PreferenceValue(std::vector<std::string>{"en"}));
  computer.advance(2s);
  EXPECT_THAT(application.calls, ElementsAre("open", "terminate"));
}

TEST_F(SettingsTabTest, testsSendTheirAlert) {
  preferences.set("alerts.network.enabled", true);
  auto tab = settings();
  std::vector<std::string> titles;
  for (const auto* shown : tab.kind<ButtonContent>()) {
    if (test::MountedViews(*shown).hasText("Test")) shown->as<ButtonContent>()->action();
  }
  computer.settle();
  for (const auto& delivery : computer.notifications.deliveries) titles.push_back(delivery.title);
  EXPECT_THAT(titles, ElementsAre("High CPU Usage", "Memory Pressure: Warning", "Low Disk Space",
                                  "Daily Data Usage"));
}

TEST_F(SettingsTabTest, alertRowsFollowThePermission) {
  auto tab = settings();
  const auto become = [&](NotificationAuthorization status) {
    computer.notifications.status = status;
    notifications.post(didBecomeActiveNotification);
    update(tab);
    return transcriptOf(tab);
  };
  const auto denied = become(NotificationAuthorization::denied);
  EXPECT_THAT(denied, HasSubstr("\nNotifications are blocked. Enable them in System Settings to receive "
                                "alerts. <Open System Settings>\n"));
  EXPECT_THAT(denied, Not(HasSubstr("CPU high usage")));
  tab.press("Open System Settings");
  EXPECT_THAT(computer.workspace.panels, testing::ElementsAre(platform::SettingsPanel::notifications));

  EXPECT_THAT(become(NotificationAuthorization::notDetermined),
              HasSubstr("Kestrune needs permission to send notifications. <Allow Notifications>"));
  computer.notifications.statusAfterRequest = NotificationAuthorization::authorized;
  tab.press("Allow Notifications");
  update(tab);
  EXPECT_TRUE(tab.hasText("CPU high usage"));
  EXPECT_THAT(become(NotificationAuthorization::provisional), HasSubstr("CPU high usage"));
}

TEST_F(SettingsTabTest, aFailedLoginItemStaysAsItWas) {
  auto tab = settings();
  computer.loginItem.failure = "Read-only file system";
  turn(tab, "Launch at login", true);
  EXPECT_THAT(transcriptOf(tab), HasSubstr("[off] «Launch at login» / Read-only file system:red"));
  computer.loginItem.failure.reset();
  turn(tab, "Launch at login", true);
  EXPECT_THAT(transcriptOf(tab), HasSubstr("[on] «Launch at login»\n(globe)"));
  EXPECT_TRUE(computer.loginItem.enabled);
  computer.loginItem.enabled = false;
  notifications.post(didBecomeActiveNotification);
  tab.update();
  EXPECT_FALSE(control<SwitchContent>(tab, "Launch at login").isOn);
}

TEST_F(SettingsTabTest, resetAsksFirst) {
  preferences.set("alerts.cpu.threshold", 55.0);
  auto tab = settings();
  for (const auto& [choice, threshold] : {std::pair(1U, "55%"), {0U, "80%"}}) {
    tab.press("Reset");
    EXPECT_THAT(transcriptOf(tab), HasSubstr("{Reset|*Cancel}"));
    const auto choices = tab.kind<AlertContent>().at(0)->as<AlertContent>()->choices;
    choices.at(choice).action();
    tab.update();
    EXPECT_TRUE(tab.kind<AlertContent>().empty());
    EXPECT_TRUE(tab.hasText(threshold));
  }
}

}  // namespace
}  // namespace kestrune::ui
