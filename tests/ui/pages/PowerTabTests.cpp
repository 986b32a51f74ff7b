#include <gmock/gmock.h>

#include "history/DailySummaryJson.h"
#include "ui/ViewFixture.h"
#include "ui/components/StatusColors.h"
#include "ui/pages/PowerTab.h"

namespace kestrune::ui {
namespace {

using testing::Contains;
using testing::IsSupersetOf;
using testing::Not;

class PowerTabTest : public test::ViewFixture {
 protected:
  test::MountedViews showing(const BatterySnapshot& battery) {
    context();
    env->battery->current.set(battery);
    return tab<PowerTab>();
  }
  // The day so many days ago, with that health.
  void keepDay(int ago, std::int64_t healthPercent) {
    const Date midnight =
        *computer.calendar.addingDays(computer.calendar.startOfDay(computer.clock.now()), -ago);
    computer.historyFolder.files[computer.calendar.dayFormatter()(midnight) + ".json"] =
        encodeDay({.date = midnight, .batteryHealthPercent = healthPercent}).text;
  }
};

TEST_F(PowerTabTest, followsTheCharge) {
  const auto symbolAt = [this](std::int64_t percent) {
    return showing({.percent = percent, .amperageMa = -1}).symbols().front();
  };
  EXPECT_EQ(symbolAt(75), "battery.100percent");
  EXPECT_EQ(symbolAt(74), "battery.75percent");
  EXPECT_EQ(symbolAt(49), "battery.50percent");
  EXPECT_EQ(symbolAt(24), "battery.25percent");
  const auto colorOf = [&](const BatterySnapshot& battery) {
    return showing(battery).kind<SymbolContent>().front().foreground;
  };
  EXPECT_EQ(colorOf({.percent = 19}), statusCriticalColor);
  EXPECT_EQ(colorOf({.percent = 20}), Color(ColorRole::primary));
  EXPECT_EQ(colorOf({.percent = 5, .isCharging = true}), statusGoodColor);

  const auto full = showing({.percent = 100, .isCharging = true});
  EXPECT_THAT(full.texts(), IsSupersetOf({"Charging", "Fully Charged"}));
  EXPECT_THAT(full.texts(), Not(Contains("Draw")));
  EXPECT_THAT(showing({.percent = 100, .isFullyCharged = true}).texts(),
              IsSupersetOf({"Fully charged", "Fully Charged"}));
}

TEST_F(PowerTabTest, healthIsAChartOnceItMoves) {
  keepDay(2, 93);
  keepDay(7, 91);
  keepDay(8, 50);
  keepDay(3, 0);
  computer.historyFolder.files["2001-01-01.json"] = "damaged";
  auto tab = this->tab<PowerTab>();
  EXPECT_THAT(tab.texts(), IsSupersetOf({"Health trend (7 days)", "7 days ago", "Today"}));
  EXPECT_EQ(tab.readOut(0, 0), "91%");
  EXPECT_EQ(tab.readOut(0, 1), "93%");
  EXPECT_EQ(tab.readOut(0, 2), "");

  env->recorder->current.batteryHealthPercent = 92;
  keepDay(7, 92);
  keepDay(2, 93);
  const auto stable = this->tab<PowerTab>();
  EXPECT_THAT(stable.texts(), IsSupersetOf({"Stable at 92%"}));
  EXPECT_THAT(stable.texts(), Not(Contains("7 days ago")));
}

}  // namespace
}  // namespace kestrune::ui
