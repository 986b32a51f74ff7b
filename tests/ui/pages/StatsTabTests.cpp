#include <gmock/gmock.h>

#include "ui/ViewFixture.h"
#include "ui/pages/StatsTab.h"

namespace kestrune::ui {
namespace {

using testing::HasSubstr;

class StatsTabTest : public test::ViewFixture {
 protected:
  test::MountedViews loaded() {
    auto views = tab<StatsTab>();
    update(views);
    return views;
  }
};

TEST_F(StatsTabTest, showsTheDaysOfTheRangeAndGaps) {
  keepDay(1, test::sampleDay());
  keepDayFile(2, "{}");
  keepDay(7, test::sampleDay());
  showSample();
  auto tab = loaded();
  const auto& chart = *tab.kind<DayChartContent>().front()->as<DayChartContent>();
  EXPECT_TRUE(chart.readOut(0).empty()) << "no text for a gap";

  tab.choose("30 days");
  update(tab);
  EXPECT_THAT(transcriptOf(tab), HasSubstr("Days recorded / 3"));
  EXPECT_EQ(tab.kind<DayChartContent>().front()->as<DayChartContent>()->days.size(), 30U);
}

TEST_F(StatsTabTest, showsThatItLoads) {
  const auto tab = this->tab<StatsTab>();
  EXPECT_THAT(transcriptOf(tab), HasSubstr("Loading history…"));
}

TEST_F(StatsTabTest, exportsUnderTheNameOfTheRange) {
  auto tab = loaded();
  EXPECT_TRUE(tab.kind<FileExportContent>().empty());
  tab.choose("90 days");
  update(tab);
  tab.press("Export CSV");
  ASSERT_EQ(tab.kind<FileExportContent>().size(), 1U);
  const auto wanted = *tab.kind<FileExportContent>().front()->as<FileExportContent>();
  EXPECT_THAT(transcriptOf(tab), HasSubstr(">Kestrune-90-days.csv (Comma-separated text)"));
  EXPECT_THAT(wanted.content, HasSubstr("Date,Avg CPU %"));
  wanted.onEnd();
  tab.update();
  EXPECT_TRUE(tab.kind<FileExportContent>().empty());
}

TEST(StatsExport, isExactToTheByte) {
  const Date day{0};
  DailySummary record = test::sampleDay();
  record.processes["b"] = {.name = "big, one", .cpuSum = 30, .cpuCount = 2, .memorySum = 2ULL << 30U};
  record.processes["c"] = {.name = "none", .cpuSum = 5, .cpuCount = 0, .memorySum = 7};
  const std::string csv = statsCSV({dayStats(record, day)}, {record}, [](Date) { return "2001-01-01"; });
  EXPECT_EQ(
      csv,
      "Date,Avg CPU %,Peak CPU %,Avg Memory GB,Peak Memory GB,Network Up MB,Network Down MB,Disk Read MB,"
      "Disk Write MB\n"
      "2001-01-01,35.0,71.5,3.00,6.00,3.0,5.0,7.0,8.0\n"
      "\n"
      "Top Processes\n"
      "Date,Process,Avg CPU %,Avg Memory\n"
      "2001-01-01,big, one,15.0,1.0 GB\n"
      "2001-01-01,editor,10.0,3 MB\n"
      "2001-01-01,none,0.0,0 KB");
  EXPECT_THAT(statsCSV({}, {}, {}),
              testing::EndsWith("\n\nTop Processes\nDate,Process,Avg CPU %,Avg Memory"));
}

}  // namespace
}  // namespace kestrune::ui
