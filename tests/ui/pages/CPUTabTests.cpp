#include <gmock/gmock.h>

#include "ui/ViewFixture.h"
#include "ui/components/Sparkline.h"

namespace kestrune::ui {
namespace {

using test::MountedViews;
using testing::ElementsAre;
using testing::IsEmpty;

class CPUTabTest : public test::ViewFixture {
 public:
  // Of the first chart in a frame of that height.
  static std::vector<double> points(const MountedViews& tab, double height) {
    for (const auto& shown : tab.kind<FrameContent>()) {
      if (shown.view->as<FrameContent>()->height.fixed != height) continue;
      if (const auto* lines = shown.view->children.front().as<LineChartContent>())
        return lines->lines.at(0).heights;
    }
    ADD_FAILURE() << "no chart of height " << height;
    return {};
  }
};

TEST_F(CPUTabTest, CoresAreNamedByTheirKind) {
  const auto labels = [](int effCores, std::size_t cores) {
    CPUSnapshot snapshot;
    snapshot.coreUsages.resize(cores);
    std::vector<std::string> found;
    for (const auto& bar : coreBars(snapshot, {"", 0, 1, effCores}, HistoryRing<CPUSnapshot>(1))) {
      EXPECT_EQ(bar.isPerformance, bar.label.front() == 'P');
      found.push_back(bar.label);
    }
    return found;
  };
  EXPECT_THAT(labels(4, 10), ElementsAre("E1", "E2", "E3", "E4", "P1", "P2", "P3", "P4", "P5", "P6"));
  EXPECT_THAT(labels(0, 3), ElementsAre("C1", "C2", "C3"));
  EXPECT_THAT(labels(-1, 2), ElementsAre("C1", "C2"));
  EXPECT_THAT(labels(4, 2), ElementsAre("E1", "E2"));
}

TEST_F(CPUTabTest, ACoresHistorySkipsTheSamplesWithoutIt) {
  HistoryRing<CPUSnapshot> history(3);
  for (const auto& usages : std::vector<std::vector<double>>{{99, 99}, {}, {10}, {20, 40}}) {
    history.append({{}, {.usagePercent = 0, .coreUsages = usages, .topProcesses = {}}});
  }
  const CPUSnapshot now{.usagePercent = 0, .coreUsages = {20, 40, 60}, .topProcesses = {}};
  const auto bars = coreBars(now, {}, history);
  EXPECT_THAT(bars.at(0).history, ElementsAre(0.1, 0.2));
  EXPECT_THAT(bars.at(1).history, ElementsAre(0.4));
  EXPECT_THAT(bars.at(2).history, IsEmpty());
}

TEST_F(CPUTabTest, LongSeriesAreThinnedTo120Points) {
  const auto series = [](std::size_t count, std::size_t samples) {
    HistoryRing<double> ring(200);
    for (std::size_t i = 0; i < count; ++i) ring.append({{}, static_cast<double>(i)});
    return thinnedSeries(ring, samples, 100).values;
  };
  EXPECT_THAT(series(0, 300), IsEmpty());
  EXPECT_THAT(series(2, 300), ElementsAre(0, 0.01));
  EXPECT_EQ(series(90, 300).size(), 90U);
  EXPECT_EQ(series(90, 60).size(), 60U);
  EXPECT_EQ(series(90, 60).front(), 0.30);
  EXPECT_EQ(series(120, 300).size(), 120U);

  const auto thinned = series(121, 300);
  ASSERT_EQ(thinned.size(), 120U);
  EXPECT_EQ(thinned.front(), 0);
  EXPECT_EQ(thinned.at(118), 1.18);  // 118 · 120 / 119 is 118.99
  EXPECT_EQ(thinned.back(), 1.20);

  const auto wrapped = series(350, 300);  // the ring holds the last 200
  ASSERT_EQ(wrapped.size(), 120U);
  EXPECT_EQ(wrapped.front(), 1.50);
  EXPECT_EQ(wrapped.at(60), 2.50);  // 60 · 199 / 119 is 100.3
  EXPECT_EQ(wrapped.back(), 3.49);
}

TEST_F(CPUTabTest, TheTimeRangeDecidesWhatTheChartShows) {
  auto tab = cpuTab();
  for (int i = 1; i < 90; ++i) second({i, i});
  tab.update();
  EXPECT_EQ(points(tab, 60).size(), 60U);
  tab.choose("5m");
  EXPECT_EQ(points(tab, 60).size(), 90U);
  EXPECT_EQ(tab.kind<SegmentedPickerContent>().front().view->as<SegmentedPickerContent>()->selected, 1);
  EXPECT_EQ(points(tab, 60).front(), 0.34);
}

TEST_F(CPUTabTest, ProcessRowsExplainThemselves) {
  auto tab = cpuTab();
  context().env.cpu->current.modify([](CPUSnapshot& snapshot) {
    snapshot.topProcesses = {{7, "CPU", "/usr/bin/cpu", 250.04, 3U << 20U}, {8, "nameless", "", 0.06, 0}};
  });
  tab.update();
  EXPECT_EQ(tab.text("nameless").view->traits->help, verbatimText("nameless"));
  // A process may be called as a caption is, and stays data.
  std::vector<std::optional<TextContent>> help;
  for (const auto& shown : tab.kind<TextContent>()) {
    const auto& content = *shown.view->as<TextContent>();
    if (content.string == "CPU" && !content.isKey) help.push_back(shown.view->traits->help);
  }
  EXPECT_THAT(help, ElementsAre(verbatimText("/usr/bin/cpu")));
}

}  // namespace
}  // namespace kestrune::ui
