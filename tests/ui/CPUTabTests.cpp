#include <gmock/gmock.h>

#include "ui/CoreBar.h"
#include "ui/MenuBarLabel.h"
#include "ui/Sparkline.h"
#include "ui/ViewFixture.h"

namespace kestrune::ui {
namespace {

using test::MountedViews;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

class CPUTabTest : public test::ViewFixture {
 public:
  // The first chart in a frame of that height.
  static LineChartContent chart(const MountedViews& tab, double height) {
    for (const auto& shown : tab.kind<FrameContent>()) {
      if (shown.view->as<FrameContent>()->height.fixed != height) continue;
      if (const auto* lines = shown.view->children.front().as<LineChartContent>()) return *lines;
    }
    ADD_FAILURE() << "no chart of height " << height;
    return {.lines = {{}}};
  }
  static std::vector<double> points(const MountedViews& tab, double height) {
    return chart(tab, height).lines.at(0).heights;
  }
  static std::vector<std::string> barLabels(const MountedViews& tab) {
    std::vector<std::string> labels;
    for (const auto& shown : tab.all()) {
      const auto* traits = shown.view->traits.get();
      if (shown.view->as<VStackContent>() != nullptr && traits != nullptr && traits->isAccessibilityElement) {
        labels.push_back(test::accessibilityLabel(*shown.view));
      }
    }
    return labels;
  }
};

TEST_F(CPUTabTest, ShowsDemonstrationValuesUntilRealOnesCome) {
  const auto tab = cpuTab();
  EXPECT_THAT(tab.texts(),
              ElementsAre("CPU Usage", "34%", "60s ago", "Now",                                     //
                          "Chip", "Model", "Test Processor 9000", "Cores", "4",                     //
                          "Per-core usage",                                                         //
                          "Usage history", "0%", "100%",                                            //
                          "Top processes", "Process", "CPU", "Memory",                              //
                          "Xcode", "18.2%", "3.8 GB", "Chrome Helper", "9.1%", "851 MB", "docker",  //
                          "4.3%", "2.6 GB"));
  EXPECT_THAT(points(tab, 60), IsEmpty());  // one sample is no line
  EXPECT_EQ(tab.text("34%").font, (Font{28, FontWeight::regular, true}));
  EXPECT_EQ(tab.text("CPU Usage").font.size, 13);
  EXPECT_EQ(tab.text("CPU Usage").foreground, Color(ColorRole::secondary));
  EXPECT_EQ(tab.text("Now").foreground, Color(ColorRole::tertiary));
  EXPECT_EQ(tab.text("100%").foreground, Color(ColorRole::secondary));
  EXPECT_TRUE(tab.text("Process").view->as<TextContent>()->isKey);
  EXPECT_FALSE(tab.text("Xcode").view->as<TextContent>()->isKey);
}

TEST_F(CPUTabTest, FollowsTheSamples) {
  auto tab = cpuTab();
  computer.processors.pass(100, {0, 0});
  second({50, 25});  // the first read that can be compared comes with the second tick
  second({50, 25});
  tab.update();
  EXPECT_TRUE(tab.hasText("37%"));  // 37.5, cut off
  EXPECT_EQ(chart(tab, 40).lines.at(0).color, Color(ColorRole::accent));
  const auto trend = points(tab, 40);
  EXPECT_EQ(trend.front(), 0.34);
  EXPECT_EQ(trend.back(), 0.375);
  EXPECT_THAT(barLabels(tab), ElementsAre("efficiency core, 50 percent", "efficiency core, 25 percent"));
}

TEST_F(CPUTabTest, ChartsTellFigureAndTimeOfAPoint) {
  auto tab = cpuTab();
  computer.processors.pass(100, {0, 0});
  second({50, 25});
  second({50, 25});
  tab.update();
  const std::size_t last = points(tab, 40).size() - 1;
  const std::string now = " · " + formats.time(computer.calendar.secondOfDay(computer.clock.now()));
  EXPECT_EQ(tab.readOut(0, last), "37.5%" + now);
  EXPECT_EQ(tab.readOut(0, last + 1), "");
  EXPECT_EQ(tab.readOut(2, 1), "25.0%" + now) << "the second core";
}

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
  EXPECT_THAT(labels(4, 0), IsEmpty());
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

TEST_F(CPUTabTest, ACoreBarShowsItsLoad) {
  const MountedViews bar(CoreBar{"P2", 61.9, true, {0.5, 0.25}});
  EXPECT_THAT(bar.texts(), ElementsAre("P2", "61%"));
  EXPECT_EQ(test::accessibilityLabel(*bar.all().front().view), "performance core, 61 percent");
  EXPECT_EQ(*bar.kind<BarContent>().front().view->as<BarContent>(),
            (BarContent{0.619, ColorRole::quaternary, ColorRole::accent, 3, 0.4}));
  EXPECT_EQ(chart(bar, 14).lines.at(0), (LineChartContent::Line{{0.5, 0.25}, Color(ColorRole::accent, 0.6)}));
  EXPECT_EQ(bar.kind<LineChartContent>().front().view->traits->accessibilityLabel,
            key("Performance core usage over last 60 seconds"));

  const MountedViews plain(CoreBar{"C1", 150, false, {}});
  const auto* load = plain.kind<BarContent>().front().view->as<BarContent>();
  EXPECT_EQ(load->fill, Color(ColorRole::secondary));
  EXPECT_EQ(load->fraction, 1);
  EXPECT_EQ(plain.kind<LineChartContent>().front().view->traits->accessibilityLabel,
            key("Efficiency core usage over last 60 seconds"));
}

TEST_F(CPUTabTest, LongSeriesAreThinnedTo120Points) {
  const auto series = [](std::size_t count, std::size_t samples) {
    HistoryRing<double> ring(200);
    for (std::size_t i = 0; i < count; ++i) ring.append({{}, static_cast<double>(i)});
    return thinnedSeries(ring, samples, 100).values;
  };
  EXPECT_THAT(series(0, 300), IsEmpty());
  EXPECT_THAT(series(1, 300), IsEmpty());
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
  const auto* picker = tab.kind<SegmentedPickerContent>().front().view->as<SegmentedPickerContent>();
  EXPECT_EQ(picker->labels,
            (std::vector{key("60s"), key("5m"), key("10m"), key("1h"), key("12h"), key("24h")}));

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
  EXPECT_TRUE(tab.hasText("250.0%"));
  EXPECT_TRUE(tab.hasText("0.1%"));
  EXPECT_TRUE(tab.hasText("3 MB"));
  EXPECT_EQ(tab.text("nameless").view->traits->help, verbatimText("nameless"));
  EXPECT_EQ(tab.text("nameless").view->as<TextContent>()->lineLimit, 1);
  EXPECT_EQ(tab.text("0.1%").font, (Font{14, FontWeight::regular, true}));
  const auto dividers = tab.kind<DividerContent>();
  ASSERT_EQ(dividers.size(), 1U);
  EXPECT_EQ(dividers.front().opacity, 0.4);
  // A process may be called as a caption is, and stays data.
  std::vector<std::optional<TextContent>> help;
  for (const auto& shown : tab.kind<TextContent>()) {
    const auto& content = *shown.view->as<TextContent>();
    if (content.string == "CPU" && !content.isKey) help.push_back(shown.view->traits->help);
  }
  EXPECT_THAT(help, ElementsAre(verbatimText("/usr/bin/cpu")));

  context().env.cpu->current.modify([](CPUSnapshot& snapshot) { snapshot.topProcesses.clear(); });
  tab.update();
  EXPECT_TRUE(tab.hasText("Process"));
  EXPECT_THAT(tab.kind<DividerContent>(), IsEmpty());
}

TEST_F(CPUTabTest, ABannerStandsForTheTableInTheSandbox) {
  isSandboxed = true;
  auto tab = cpuTab();
  EXPECT_THAT(tab.texts(), Not(Contains("Top processes")));
  EXPECT_TRUE(tab.hasText("Top processes unavailable"));
  EXPECT_TRUE(tab.hasText("App Store does not allow access to per-process CPU data."));
  for (const char* rest : {"CPU Usage", "Chip", "Per-core usage", "Usage history"})
    EXPECT_TRUE(tab.hasText(rest));

  tab.press("Dismiss");
  EXPECT_FALSE(tab.hasText("Top processes unavailable"));
  EXPECT_TRUE(tab.hasText("Usage history"));
}

TEST_F(CPUTabTest, TheMenuBarShowsEveryThirdSample) {
  class Label final : public Component {
   public:
    Label(const CPUProvider& cpu, LocaleFormats& formats) : label_{cpu}, formats_(formats) {}
    View body() override { return label_.body(formats_); }

   private:
    MenuBarLabel label_;
    LocaleFormats& formats_;
  };
  MountedViews label(component<Label>([&] { return std::make_shared<Label>(*context().env.cpu, formats); }));
  EXPECT_THAT(label.texts(), ElementsAre("34%"));
  EXPECT_EQ(label.text("34%").font, (Font{11, FontWeight::medium, true}));
  EXPECT_EQ(label.kind<ImageContent>().front().view->as<ImageContent>()->name, "MenuBarIconTemplate");

  for (int i = 0; i < 2; ++i) {
    second({100, 100});
    label.update();
    EXPECT_EQ(label.component<Label>().second, 1);
  }
  second({100, 100});
  label.update();
  EXPECT_THAT(label.texts(), ElementsAre("100%"));
}

}  // namespace
}  // namespace kestrune::ui
