#include <gmock/gmock.h>

#include "ui/ViewFixture.h"
#include "ui/pages/SettingsTab.h"

namespace kestrune::ui {
namespace {

using namespace std::chrono_literals;
using platform::NotificationAuthorization;
using testing::Contains;
using testing::ElementsAre;
using testing::Not;

class SettingsTabTest : public test::ViewFixture {
 protected:
  test::MountedViews settings() {
    auto views = tab<SettingsTab>();
    update(views);
    return views;
  }
  static void turn(test::MountedViews& tab, const std::string& label, bool isOn) {
    const auto change = control<SwitchContent>(tab, label).onChange;
    change(isOn);
    tab.update();
  }
  template <class C>
  static C control(const test::MountedViews& tab, const std::string& label) {
    for (const auto& shown : tab.kind<C>()) {
      if (test::accessibilityLabel(*shown.view) == label) return *shown.view->template as<C>();
    }
    ADD_FAILURE() << "nothing is called " << label;
    return {};
  }
  // The picker that has such a segment.
  static SegmentedPickerContent picker(const test::MountedViews& tab, const std::string& segment) {
    for (const auto& shown : tab.kind<SegmentedPickerContent>()) {
      const auto* found = shown.view->as<SegmentedPickerContent>();
      for (const auto& label : found->labels) {
        if (label.string == segment) return *found;
      }
    }
    ADD_FAILURE() << "no picker offers " << segment;
    return {};
  }
  platform::PreferenceMap& stored() { return computer.preferences.stored; }
};

TEST_F(SettingsTabTest, everyChangeIsStoredAtOnce) {
  auto tab = settings();
  EXPECT_TRUE(stored().empty()) << "looking stores nothing";
  turn(tab, "Disk activity", true);
  EXPECT_EQ(stored().at("metrics.disk.menubar.enabled"), platform::PreferenceValue(true));
  EXPECT_TRUE(control<SwitchContent>(tab, "Disk activity").isOn);
  picker(tab, "Critical only").onSelect(1);
  picker(tab, "90 days").onSelect(2);
  control<SliderContent>(tab, "CPU high usage").onChange(95);
  tab.update();
  EXPECT_EQ(stored().at("alerts.memory.threshold"), platform::PreferenceValue(std::string("critical")));
  EXPECT_EQ(stored().at("history.retentionDays"), platform::PreferenceValue(std::int64_t{90}));
  EXPECT_EQ(stored().at("alerts.cpu.threshold"), platform::PreferenceValue(95.0));
  EXPECT_TRUE(tab.hasText("95%"));

  turn(tab, "Daily data usage", true);
  EXPECT_TRUE(tab.hasText("Alert at"));
  tab.chooseMenuItem("20 GB");
  EXPECT_EQ(stored().at("alerts.network.dailyGB"), platform::PreferenceValue(std::int64_t{20}));

  preferences.set("alerts.disk.threshold", std::int64_t{12});
  tab.update();
  EXPECT_EQ(picker(tab, "10% free").selected, -1) << "what isn't offered selects nothing";
}

TEST_F(SettingsTabTest, alertRowsFollowTheirSwitchesAndThePermission) {
  auto tab = settings();
  turn(tab, "Memory pressure", false);
  EXPECT_THAT(tab.texts(), Not(Contains("Warning or higher")));
  tab.press("Test");
  update(tab);
  ASSERT_EQ(computer.notifications.deliveries.size(), 1U);

  computer.notifications.status = NotificationAuthorization::denied;
  notifications.post(didBecomeActiveNotification);
  update(tab);
  EXPECT_THAT(tab.texts(), Not(Contains("CPU high usage")));
  tab.press("Open System Settings");
  EXPECT_THAT(computer.workspace.panels, ElementsAre(platform::SettingsPanel::notifications));

  computer.notifications.status = NotificationAuthorization::notDetermined;
  computer.notifications.statusAfterRequest = NotificationAuthorization::authorized;
  notifications.post(didBecomeActiveNotification);
  update(tab);
  tab.press("Allow Notifications");
  update(tab);
  EXPECT_TRUE(tab.hasText("CPU high usage"));
  turn(tab, "Enable alerts", false);
  EXPECT_THAT(tab.texts(), Not(Contains("CPU high usage")));
}

TEST_F(SettingsTabTest, aLoginItemThatCannotBeSetStaysAsItWas) {
  auto tab = settings();
  computer.loginItem.failure = "Read-only file system";
  turn(tab, "Launch at login", true);
  EXPECT_FALSE(control<SwitchContent>(tab, "Launch at login").isOn);
  EXPECT_TRUE(tab.hasText("Read-only file system"));
  computer.loginItem.failure.reset();
  turn(tab, "Launch at login", true);
  EXPECT_TRUE(control<SwitchContent>(tab, "Launch at login").isOn);
  EXPECT_TRUE(computer.loginItem.enabled);
  EXPECT_THAT(tab.texts(), Not(Contains("Read-only file system")));
}

TEST_F(SettingsTabTest, resetAsksFirst) {
  preferences.set("alerts.cpu.threshold", 55.0);
  auto tab = settings();
  const auto answer = [&tab](std::size_t choice) {
    tab.press("Reset");
    const auto alerts = tab.kind<AlertContent>();
    ASSERT_EQ(alerts.size(), 1U);
    const auto action = alerts.front().view->as<AlertContent>()->choices.at(choice).action;
    action();
    tab.update();
    EXPECT_TRUE(tab.kind<AlertContent>().empty());
  };
  answer(1);
  EXPECT_TRUE(tab.hasText("55%"));
  answer(0);
  EXPECT_TRUE(tab.hasText("80%"));
}

TEST_F(SettingsTabTest, theSandboxTurnsItsProcessesOffAtTheFirstLook) {
  isSandboxed = true;
  auto tab = settings();
  EXPECT_EQ(stored().at("metrics.processes.menubar.enabled"), platform::PreferenceValue(false));
  EXPECT_FALSE(control<SwitchContent>(tab, "Top processes").isOn);
}

}  // namespace
}  // namespace kestrune::ui
