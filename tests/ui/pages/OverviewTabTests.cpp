#include <gmock/gmock.h>

#include "history/DailySummaryJson.h"
#include "ui/ViewFixture.h"
#include "ui/components/StatusColors.h"
#include "ui/pages/overview/OverviewTab.h"

namespace kestrune::ui {
namespace {

using namespace std::chrono_literals;
using testing::Contains;
using testing::ElementsAre;
using testing::IsSupersetOf;

constexpr double daySeconds = 86400;

class OverviewTabTest : public test::ViewFixture {
 protected:
  test::MountedViews overview() {
    auto views = tab<OverviewTab>();
    computer.settle();
    views.update();
    return views;
  }
  // A day so many days ago.
  DailySummary day(int ago) {
    DailySummary record;
    record.date = computer.calendar.startOfDay(computer.clock.now()) + -daySeconds * ago;
    HourBucket hour;
    hour.cpu = {.sum = 90, .count = 2, .peak = 71.5};
    hour.memoryGB = {.sum = 8, .count = 2, .peak = 6};
    hour.batteryPercent = {.sum = 30, .count = 2, .peak = 20};
    hour.networkUpBytes = 3 << 20;
    hour.networkDownBytes = 5 << 20;
    hour.diskReadBytes = 7 << 20;
    record.hours = {hour};
    record.diskTotalBytes = 10ULL << 30U;
    record.diskUsedBytes = 7ULL << 30U;
    record.diskFreeBytes = 3ULL << 30U;
    record.uptimeDays = 2;
    record.uptimeHours = 3;
    record.uptimeMinutes = 4;
    record.processes["editor"] = {.name = "editor", .cpuSum = 30, .cpuCount = 3, .memorySum = 9 << 20};
    return record;
  }
  void keep(const DailySummary& record) {
    const auto name = computer.calendar.dayFormatter()(record.date) + ".json";
    computer.historyFolder.files[name] = encodeDay(record).text;
  }
  static bool isEnabled(const test::MountedViews& views, const char* symbolName) {
    for (const auto& shown : views.kind<ButtonContent>()) {
      const auto& labelled = shown.view->children.front();
      const auto names = test::MountedViews(labelled).symbols();
      if (!names.empty() && names.front() == symbolName) {
        return !(shown.view->traits && shown.view->traits->isDisabled);
      }
    }
    ADD_FAILURE() << "no button shows " << symbolName;
    return false;
  }
  static Color ringColor(const test::MountedViews& views) {
    return views.kind<RingContent>().front().view->as<RingContent>()->arc;
  }
};

TEST_F(OverviewTabTest, showsAPastDayFromItsRecord) {
  keep(day(1));
  auto views = overview();
  ASSERT_TRUE(isEnabled(views, "chevron.left"));
  ASSERT_FALSE(isEnabled(views, "chevron.right"));
  env->shiftSelectedDate(-1);
  views.update();
  EXPECT_THAT(views.texts(), IsSupersetOf({"Yesterday", "45%", "Peak 71%  ·  Hourly avg, 24 h", "4.0",
                                           "Avg · Peak 6 GB", "15%", "7 MB", "2d", "3h 4m",
                                           "Multiple Networks", "3 MB", "5 MB", "editor", "10.0%"}));
  EXPECT_EQ(ringColor(views), statusWarningColor) << "exactly 70 percent";
  EXPECT_FALSE(isEnabled(views, "chevron.left")) << "the day before has no file";
  EXPECT_TRUE(isEnabled(views, "chevron.right"));
  views.press("Live");
  EXPECT_TRUE(views.hasText("Collecting…"));
}

TEST_F(OverviewTabTest, aDayWithoutARecordSaysSo) {
  auto views = overview();
  env->shiftSelectedDate(-3);
  views.update();
  EXPECT_THAT(views.texts(), IsSupersetOf({"May 6, 2026", "No data for this day"}));
}

TEST_F(OverviewTabTest, aPastDayCanBeNarrowedToOneNetworkUntilAnotherDayIsShown) {
  auto record = day(1);
  record.networkSSIDs = {{"Home", {.uploadBytes = 1 << 20, .downloadBytes = 2 << 20}}, {"Ethernet", {}}};
  keep(record);
  auto other = day(2);
  other.networkSSIDs = {{"Ethernet", {}}};
  keep(other);
  auto views = overview();
  env->shiftSelectedDate(-1);
  views.update();
  EXPECT_THAT(views.menuItems(), ElementsAre("All Networks", "", "Home", "Ethernet"));
  views.chooseMenuItem("Home");
  EXPECT_TRUE(views.hasText("2 MB"));
  EXPECT_FALSE(views.hasText("Multiple Networks"));
  env->shiftSelectedDate(-1);
  views.update();
  EXPECT_THAT(views.menuItems(), ElementsAre("All Networks", "Ethernet"));
  EXPECT_THAT(views.symbols(), Contains("cable.connector"));
  env->shiftSelectedDate(1);
  views.update();
  EXPECT_TRUE(views.hasText("Multiple Networks")) << "the choice is forgotten";
}

TEST_F(OverviewTabTest, thresholdsColourTheGauges) {
  auto views = overview();
  const auto ring = [&](std::uint64_t used) {
    env->disk->current.modify([&](DiskSnapshot& disk) {
      disk.volumeTotalBytes = 100;
      disk.volumeUsedBytes = used;
    });
    update(views);
    return ringColor(views);
  };
  EXPECT_EQ(ring(69), Color(ColorRole::accent));
  EXPECT_EQ(ring(87), statusWarningColor);
  EXPECT_EQ(ring(88), statusCriticalColor);
  const auto battery = [&](std::int64_t percent) {
    env->battery->current.modify([&](BatterySnapshot& snapshot) { snapshot.percent = percent; });
    update(views);
    return views.kind<BarContent>().back().view->as<BarContent>()->fill;
  };
  EXPECT_EQ(battery(19), statusCriticalColor.withOpacity(0.85));
  EXPECT_EQ(battery(20), statusGoodColor.withOpacity(0.85));
}

TEST_F(OverviewTabTest, theSandboxWithholdsTheProcessesOfAnyDay) {
  isSandboxed = true;
  keep(day(1));
  auto views = overview();
  EXPECT_TRUE(views.hasText("Top processes unavailable"));
  env->shiftSelectedDate(-1);
  views.update();
  EXPECT_TRUE(views.hasText("Top processes unavailable"));
  EXPECT_FALSE(views.hasText("editor"));
  views.press("Dismiss");
  EXPECT_FALSE(views.hasText("Top processes unavailable"));
}

}  // namespace
}  // namespace kestrune::ui
