#include "AlertsFixture.h"

namespace kestrune {
namespace {

using namespace std::chrono_literals;
using platform::NotificationAuthorization;
using testing::ElementsAre;
using testing::IsEmpty;
using Sample = AlertsMonitor::Sample;

class AlertsMonitorTest : public test::AlertsFixture {};

TEST_F(AlertsMonitorTest, evaluatesEveryFiveSecondsWhileItIsAllowedTo) {
  setPressure(Pressure::warning);
  start();
  advance(4999ms);
  EXPECT_THAT(fired(), IsEmpty());
  advance(1ms);
  EXPECT_THAT(fired(), ElementsAre("memory-pressure"));

  struct Case {
    NotificationAuthorization status;
    bool runs;
  };
  for (const auto& [status, runs] :
       {Case{NotificationAuthorization::notDetermined, false}, Case{NotificationAuthorization::denied, false},
        Case{NotificationAuthorization::ephemeral, false}, Case{NotificationAuthorization::provisional, true},
        Case{NotificationAuthorization::authorized, true}}) {
    monitor->authorizationStatus.set(status);
    setPressure(Pressure::nominal);
    evaluate();
    setPressure(Pressure::warning);
    evaluate();
    EXPECT_EQ(!fired().empty(), runs) << static_cast<int>(status);
  }
}

TEST_F(AlertsMonitorTest, doesNothingBeforeItKnowsThatItMay) {
  setPressure(Pressure::critical);
  monitor->start(cpu, memoryProvider, disk, recorder);
  evaluate(3);
  EXPECT_THAT(fired(), IsEmpty());
  monitor->refreshAuthorization();
  evaluate();
  EXPECT_THAT(fired(), ElementsAre("memory-pressure"));
}

TEST_F(AlertsMonitorTest, whileAlertsAreOffTheRulesKeepWhatTheyRemember) {
  start();
  setCPU(90);
  evaluate(2);
  set("alerts.master.enabled", false);
  setCPU(10);
  advance(1min);
  EXPECT_THAT(fired(), IsEmpty());
  setCPU(90);
  set("alerts.master.enabled", true);
  evaluate();
  EXPECT_THAT(fired(), ElementsAre("cpu-high"));
}

TEST_F(AlertsMonitorTest, tellsWhatTheUserAllows) {
  int changes = 0;
  Dependencies reader([&] { ++changes; });
  const auto look = [&] { return reader.track([&] { return monitor->authorizationStatus.get(); }); };
  EXPECT_EQ(look(), NotificationAuthorization::notDetermined);
  notifications.status = NotificationAuthorization::denied;
  monitor->refreshAuthorization();
  EXPECT_EQ(look(), NotificationAuthorization::notDetermined) << "the answer comes later";
  settle();
  EXPECT_EQ(changes, 1);
  EXPECT_EQ(look(), NotificationAuthorization::denied);
  monitor->refreshAuthorization();
  settle();
  EXPECT_EQ(changes, 1) << "nothing new";

  EXPECT_EQ(notifications.requests, 0) << "nobody is asked unless the user wants it";
  notifications.statusAfterRequest = NotificationAuthorization::authorized;
  monitor->requestAuthorization();
  settle();
  EXPECT_EQ(notifications.requests, 1);
  EXPECT_EQ(look(), NotificationAuthorization::authorized);

  monitor->openNotificationSettings();
  EXPECT_THAT(workspace.opened, ElementsAre("x-apple.systempreferences:com.apple.preference.notifications"));
}

TEST_F(AlertsMonitorTest, samplesAreSentWhateverTheSettingsSay) {
  set("alerts.master.enabled", false);
  set("alerts.cpu.threshold", 65.0);
  set("alerts.network.dailyGB", std::int64_t{20});
  notifications.status = NotificationAuthorization::denied;
  const std::vector<platform::UserNotification> expected{
      {"test-cpu", "High CPU Usage", "CPU above 65% for 30 s (85% now)"},
      {"test-memory", "Memory Pressure: Warning", "12.3 GB used of 16 GB — consider closing unused apps"},
      {"test-disk", "Low Disk Space", "8% free — 40.2 GB remaining"},
      {"test-network", "Daily Data Usage", "You've used 20.1 GB of data today"}};
  for (const auto kind : {Sample::cpu, Sample::memory, Sample::disk, Sample::network})
    monitor->sendTest(kind);
  ASSERT_EQ(notifications.deliveries.size(), expected.size());
  for (std::size_t i = 0; i < expected.size(); ++i) {
    EXPECT_EQ(notifications.deliveries[i].identifier, expected[i].identifier);
    EXPECT_EQ(notifications.deliveries[i].title, expected[i].title);
    EXPECT_EQ(notifications.deliveries[i].body, expected[i].body);
  }

  LocaleFormats spanish("es_ES.UTF-8");
  makeMonitor(spanish)->sendTest(Sample::disk);
  EXPECT_EQ(notifications.deliveries.back().body, "8\u00a0% free — 40.2 GB remaining");
}

TEST_F(AlertsMonitorTest, aFailureIsOneLineAndChangesNothing) {
  start();
  notifications.error = "the service\nis gone";
  setPressure(Pressure::warning);
  testing::internal::CaptureStdout();
  evaluate(3);
  EXPECT_EQ(testing::internal::GetCapturedStdout(),
            "[AlertsMonitor] failed to deliver 'memory-pressure': the service is gone\n");
  EXPECT_THAT(fired(), ElementsAre("memory-pressure")) << "there is no second attempt";
  notifications.error.reset();
  testing::internal::CaptureStdout();
  monitor->sendTest(Sample::cpu);
  settle();
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
}

TEST_F(AlertsMonitorTest, keepsItsSourcesAsLongAsItEvaluatesThem) {
  start();
  const std::weak_ptr<CPUProvider> first = cpu;
  cpu = std::make_shared<CPUProvider>(loop, processors, chip, scans);
  setCPU(10);
  evaluate();
  EXPECT_FALSE(first.expired());
  start();
  EXPECT_TRUE(first.expired()) << "started again it lets go of the old ones";

  const std::weak_ptr<CPUProvider> second = cpu;
  setPressure(Pressure::critical);
  monitor->refreshAuthorization();
  monitor->requestAuthorization();
  monitor.reset();
  cpu.reset();
  evaluate(2);
  EXPECT_TRUE(second.expired());
  EXPECT_THAT(fired(), IsEmpty());
}

}  // namespace
}  // namespace kestrune
