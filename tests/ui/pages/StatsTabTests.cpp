#include <gmock/gmock.h>

#include "history/DailySummaryJson.h"
#include "ui/ViewFixture.h"
#include "ui/pages/StatsTab.h"

namespace kestrune::ui {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsSupersetOf;

DailySummary dayOf(Date midnight, double cpuPercent, double downloadBytes) {
  DailySummary day{.date = midnight};
  HourBucket hour{.hour = 9};
  hour.cpu.fold(cpuPercent, midnight);
  hour.memoryGB.fold(cpuPercent / 10, midnight);
  hour.networkDownBytes = downloadBytes;
  day.hours.push_back(hour);
  return day;
}

class StatsTabTest : public test::ViewFixture {
 protected:
  Date midnight(int ago) {
    return *computer.calendar.addingDays(computer.calendar.startOfDay(computer.clock.now()), -ago);
  }
  void keep(int ago, const DailySummary& day) {
    computer.historyFolder.files[computer.calendar.dayFormatter()(midnight(ago)) + ".json"] =
        encodeDay(day).text;
  }
  test::MountedViews loaded() {
    auto views = tab<StatsTab>();
    update(views);
    return views;
  }
  static const DayChartContent& chart(const test::MountedViews& tab, std::size_t index) {
    return *tab.kind<DayChartContent>().at(index).view->as<DayChartContent>();
  }
};

TEST_F(StatsTabTest, sumsUpTheRangeAndLeavesGaps) {
  keep(1, dayOf(midnight(1), 40, 3 * 1048576.0));
  keep(6, dayOf(midnight(6), 80, 1048576.0));
  keep(7, dayOf(midnight(7), 99, 9e9));
  computer.historyFolder.files[computer.calendar.dayFormatter()(midnight(2)) + ".json"] = "{}";
  auto tab = loaded();
  EXPECT_THAT(tab.texts(), IsSupersetOf({"3", "40%", "80%", "4 MB"}));
  const auto& cpu = chart(tab, 0);
  EXPECT_THAT(cpu.series[1].figures,
              ElementsAre(80.0, std::nullopt, std::nullopt, std::nullopt, std::nullopt, 40.0, 0.0));
  ASSERT_TRUE(cpu.readOut);
  EXPECT_TRUE(cpu.readOut(1).empty()) << "a gap has nothing to tell";
  EXPECT_EQ(cpu.readOut(0).size(), 7U);
  EXPECT_EQ(test::accessibilityLabel(*tab.kind<DayChartContent>().front().view),
            "CPU usage trend. Avg 40 percent, peak 80 percent.");

  tab.choose("30 days");
  update(tab);
  EXPECT_TRUE(tab.hasText("99%"));
  EXPECT_EQ(chart(tab, 0).days.size(), 30U);
}

TEST_F(StatsTabTest, exportsUnderTheNameOfTheRange) {
  auto tab = loaded();
  EXPECT_TRUE(tab.kind<FileExportContent>().empty());
  tab.choose("90 days");
  update(tab);
  tab.press("Export CSV");
  ASSERT_EQ(tab.kind<FileExportContent>().size(), 1U);
  const auto wanted = *tab.kind<FileExportContent>().front().view->as<FileExportContent>();
  EXPECT_EQ(wanted.fileName, "Kestrune-90-days.csv");
  EXPECT_THAT(wanted.content, HasSubstr("Date,Avg CPU %"));
  wanted.onEnd();
  tab.update();
  EXPECT_TRUE(tab.kind<FileExportContent>().empty());
}

TEST(StatsExport, isExactToTheByte) {
  const Date day{0};
  DailySummary record = dayOf(day, 12.34, 1048576);
  record.hours[0].diskWriteBytes = 1.5 * 1048576;
  record.processes["a"] = {
      .name = "big, one", .cpuSum = 30, .cpuCount = 2, .memorySum = std::uint64_t{2} << 30U};
  record.processes["b"] = {.name = "none", .cpuSum = 5, .cpuCount = 0, .memorySum = 7};
  record.processes["c"] = {.name = "small", .cpuSum = 3, .cpuCount = 1, .memorySum = 5 << 20};
  const std::string csv = statsCSV({dayStats(record, day)}, {record}, [](Date) { return "2001-01-01"; });
  EXPECT_EQ(
      csv,
      "Date,Avg CPU %,Peak CPU %,Avg Memory GB,Peak Memory GB,Network Up MB,Network Down MB,Disk Read MB,"
      "Disk Write MB\n"
      "2001-01-01,12.3,12.3,1.23,1.23,0.0,1.0,0.0,1.5\n"
      "\n"
      "Top Processes\n"
      "Date,Process,Avg CPU %,Avg Memory\n"
      "2001-01-01,big, one,15.0,1.0 GB\n"
      "2001-01-01,small,3.0,5 MB\n"
      "2001-01-01,none,0.0,0 KB");
  EXPECT_THAT(statsCSV({}, {}, {}),
              testing::EndsWith("\n\nTop Processes\nDate,Process,Avg CPU %,Avg Memory"));
}

}  // namespace
}  // namespace kestrune::ui
