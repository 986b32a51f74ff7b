#include "AlertsFixture.h"

namespace kestrune {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

class AlertsMonitorTest : public test::AlertsFixture {};

TEST_F(AlertsMonitorTest, evaluatesEveryFiveSecondsWhileAuthorized) {
  setPressure(Pressure::warning);
  start();
  advance(4999ms);
  EXPECT_THAT(fired(), IsEmpty());
  advance(1ms);
  EXPECT_THAT(fired(), ElementsAre("memory-pressure"));

  using enum platform::NotificationAuthorization;
  for (const auto status : {notDetermined, denied, ephemeral, provisional, authorized}) {
    monitor->authorizationStatus.set(status);
    setPressure(Pressure::nominal);
    evaluate();
    setPressure(Pressure::warning);
    EXPECT_EQ(!firedAfter().empty(), status == provisional || status == authorized)
        << static_cast<int>(status);
  }
}

TEST_F(AlertsMonitorTest, rulesKeepStateWhileAlertsAreOff) {
  start();
  setCPU(90);
  evaluate(2);
  set("alerts.master.enabled", false);
  setCPU(10);
  advance(1min);
  EXPECT_THAT(fired(), IsEmpty());
  setCPU(90);
  set("alerts.master.enabled", true);
  EXPECT_THAT(firedAfter(), ElementsAre("cpu-high"));
}

TEST_F(AlertsMonitorTest, deliveryFailurePrintsOneLine) {
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
  monitor->sendTest(AlertsMonitor::Sample::cpu);
  settle();
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
}

TEST_F(AlertsMonitorTest, stepsOfTheWallClockDoNotChangeSpans) {
  start();
  for (const double step : {-3600.0, 3600.0}) {
    setCPU(10);
    evaluate();
    setCPU(90);
    evaluate(2);
    clock.setWall(clock.now() + step);
    EXPECT_EQ(evaluationsUntilItFires(), 5) << step;
  }
  setCPU(10);
  fired();
  setDisk(100, 95);
  evaluate();
  EXPECT_THAT(fired(), ElementsAre("disk-low"));
  clock.setWall(clock.now() + 7200);
  evaluate();
  EXPECT_THAT(fired(), IsEmpty());
  clock.setWall(clock.now() + -86400);
  advance(1h + 5s);
  EXPECT_THAT(fired(), ElementsAre("disk-low"));
}

TEST_F(AlertsMonitorTest, numbersFollowTheLocale) {
  LocaleFormats spanish("es_ES.UTF-8");
  monitor = std::make_shared<AlertsMonitor>(
      loop, AlertsMonitor::Services{settings, notifications, workspace, calendar, texts, spanish});
  monitor->sendTest(AlertsMonitor::Sample::memory);
  monitor->sendTest(AlertsMonitor::Sample::disk);
  EXPECT_THAT(fired(), ElementsAre("test-memory", "test-disk"));
  EXPECT_EQ(last.body, "8\u00A0% free — 40,2 GB remaining");
}

TEST_F(AlertsMonitorTest, keepsSourcesAliveWhileEvaluating) {
  start();
  const std::weak_ptr<CPUProvider> first = sources.cpu;
  sources.cpu = test::Providers(*this).cpu;
  setCPU(10);
  evaluate();
  EXPECT_FALSE(first.expired());
  start();
  EXPECT_TRUE(first.expired()) << "started again it lets go of the old ones";

  const std::weak_ptr<CPUProvider> second = sources.cpu;
  setPressure(Pressure::critical);
  monitor->refreshAuthorization();
  monitor->requestAuthorization();
  monitor.reset();
  sources.cpu.reset();
  evaluate(2);
  EXPECT_TRUE(second.expired());
  EXPECT_THAT(fired(), IsEmpty());
}

}  // namespace
}  // namespace kestrune
