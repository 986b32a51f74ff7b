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
  struct Switch {
    const char* label;
    const char* key;
    bool isOnAtFirst;
    const char* row;  // shown while it is on
  };
  const std::vector<Switch> switches{
      {"CPU usage", "metrics.cpu.menubar.enabled", true, ""},
      {"Memory usage", "metrics.memory.menubar.enabled", true, ""},
      {"Disk activity", "metrics.disk.menubar.enabled", false, ""},
      {"Network throughput", "metrics.network.menubar.enabled", false, ""},
      {"IP address", "metrics.ip.menubar.enabled", false, ""},
      {"Audio output", "metrics.audio.menubar.enabled", false, ""},
      {"Top processes", "metrics.processes.menubar.enabled", true, ""},
      {"CPU high usage", "alerts.cpu.enabled", true, "[50..99/5 80] «CPU high usage» 80%\n"},
      {"Memory pressure", "alerts.memory.enabled", true, "{*Warning or higher|Critical only}\n"},
      {"Low disk space", "alerts.disk.enabled", true, "{5% free|*10% free|15% free|20% free}\n"},
      {"Daily data usage", "alerts.network.enabled", false,
       "Alert at {1 GB|2 GB|*5 GB|10 GB|20 GB|50 GB} 5 GB (chevron.down)\n"},
      {"Enable alerts", "alerts.master.enabled", true, "(bell.fill)"}};
  auto tab = settings();
  for (const auto& [label, key, isOnAtFirst, row] : switches) {
    for (const bool isOn : {!isOnAtFirst, isOnAtFirst}) {
      turn(tab, label, isOn);
      EXPECT_EQ(stored().at(key), platform::PreferenceValue(isOn)) << label;
      const std::string all = transcriptOf(tab);
      EXPECT_THAT(all, HasSubstr(std::string(isOn ? "[on]" : "[off]") + " «" + label + "»"));
      if (*row == '\0') continue;
      EXPECT_EQ(all.find(row) != std::string::npos, isOn) << label;
    }
  }
  EXPECT_EQ(stored().size(), switches.size());
  turn(tab, "Enable alerts", false);
  EXPECT_FALSE(tab.hasText("CPU high usage"));
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
  const auto answer = [&tab](std::size_t choice, const char* title) {
    tab.press("Reset");
    const auto alerts = tab.kind<AlertContent>();
    ASSERT_EQ(alerts.size(), 1U);
    const auto chosen = alerts.front()->as<AlertContent>()->choices.at(choice);
    EXPECT_EQ(chosen.title.string, title);
    EXPECT_EQ(chosen.isCancel, choice == 1);
    chosen.action();
    tab.update();
    EXPECT_TRUE(tab.kind<AlertContent>().empty());
  };
  answer(1, "Cancel");
  EXPECT_TRUE(tab.hasText("55%"));
  answer(0, "Reset");
  EXPECT_TRUE(tab.hasText("80%"));
}

}  // namespace
}  // namespace kestrune::ui
