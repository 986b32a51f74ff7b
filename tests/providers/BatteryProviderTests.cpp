#include <gmock/gmock.h>

#include "support/Providers.h"

namespace kestrune {
namespace {

using namespace std::chrono_literals;

class BatteryProviderTest : public testing::Test, public test::ScriptedPlatform {
 protected:
  BatteryProviderTest() { powerSources.source.emplace(); }
  const BatterySnapshot& read() {
    provider->tick();
    return *provider->current;
  }

  std::shared_ptr<BatteryProvider> provider = test::Providers(*this).battery;
};

TEST_F(BatteryProviderTest, keepsThePreviewWithoutABattery) {
  powerSources.source.reset();
  provider->start(30s);
  advance(5min);
  EXPECT_EQ(provider->current->percent, 87);
  EXPECT_EQ(provider->current->timeRemainingText(), "4h 12m");
  EXPECT_EQ(provider->history->size(), 0U);
}

TEST_F(BatteryProviderTest, readsAtOnceAndThenOncePerInterval) {
  powerSources.source = platform::PowerSource{.currentCapacity = 55, .timeToEmpty = 90};
  powerSources.registry = platform::BatteryRegistry{.cycleCount = 7,
                                                    .designCapacity = 5000,
                                                    .voltage = 11000,
                                                    .instantAmperage = -900,
                                                    .rawMaxCapacity = 4000,
                                                    .rawCurrentCapacity = 2200,
                                                    .maxCapacity = 1,
                                                    .currentCapacity = 1,
                                                    .temperature = 2950};
  provider->start(30s);
  const BatterySnapshot& now = *provider->current;
  EXPECT_EQ(now.percent, 55);
  EXPECT_EQ(now.timeRemainingMinutes, 90);
  EXPECT_EQ(now.cycleCount, 7);
  EXPECT_EQ(now.voltageMV, 11000);
  EXPECT_EQ(now.amperageMa, -900);
  EXPECT_EQ(now.currentCapacityMah, 2200);
  EXPECT_EQ(now.designCapacityMah, 5000);
  EXPECT_EQ(now.healthPercent, 80);
  EXPECT_EQ(now.temperatureCelsius, 29.5);
  advance(60s);
  EXPECT_EQ(provider->history->size(), 3U);
}

TEST_F(BatteryProviderTest, missingFiguresHaveDefaults) {
  powerSources.registry.reset();
  const BatterySnapshot& now = read();
  EXPECT_EQ(now.timeRemainingMinutes, std::nullopt);
  EXPECT_EQ(now.healthPercent, 100);
  EXPECT_EQ(now.temperatureCelsius, std::nullopt);
  powerSources.registry =
      platform::BatteryRegistry{.maxCapacity = 4000, .currentCapacity = 3000, .temperature = 0};
  EXPECT_EQ(read().currentCapacityMah, 3000);
  EXPECT_EQ(read().temperatureCelsius, 0.0);
  EXPECT_EQ(read().healthPercent, 100) << "no design to compare with";
}

TEST_F(BatteryProviderTest, healthIsTruncatedAndGivesTheCondition) {
  struct Case {
    std::int64_t full;
    std::int64_t percent;
    BatteryCondition condition;
  };
  for (const auto& [full, percent, condition] : {Case{4000, 80, BatteryCondition::good},
                                                 {3999, 79, BatteryCondition::fair},
                                                 {2500, 50, BatteryCondition::fair},
                                                 {2499, 49, BatteryCondition::poor},
                                                 {5600, 100, BatteryCondition::good}}) {
    powerSources.registry = platform::BatteryRegistry{.designCapacity = 5000, .rawMaxCapacity = full};
    EXPECT_EQ(read().healthPercent, percent) << full;
    EXPECT_EQ(provider->current->condition, condition) << full;
  }
}

TEST_F(BatteryProviderTest, timeRemainingFollowsTheDirection) {
  powerSources.source = platform::PowerSource{
      .currentCapacity = 50, .isCharging = true, .timeToEmpty = 200, .timeToFullCharge = 60};
  EXPECT_EQ(read().timeRemainingText(), "1h 0m");
  powerSources.source->timeToFullCharge = 0;
  EXPECT_EQ(read().timeRemainingText(), "Calculating…");
  powerSources.source->currentCapacity = 100;
  EXPECT_EQ(read().timeRemainingText(), "Fully Charged");
  powerSources.source->isCharging = false;
  EXPECT_EQ(read().timeRemainingText(), "3h 20m");
  powerSources.source->timeToEmpty = 1;
  EXPECT_EQ(read().timeRemainingText(), "1m");
  powerSources.registry = platform::BatteryRegistry{.fullyCharged = true};
  EXPECT_EQ(read().timeRemainingText(), "Fully Charged");
}

}  // namespace
}  // namespace kestrune
