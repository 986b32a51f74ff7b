#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "ui/qt/LeafSupport.h"

namespace kestrune::ui::qt {
namespace {

struct Change {
  const char* name;
  Content before;
  Content after;
};

template <class C, class Edit>
Change change(const char* name, C content, Edit edit) {
  const Content before = content;
  edit(content);
  return {name, before, content};
}

std::vector<Change> changes() {
  const LineChartContent lines{{{{0, 1}, blue}}, 4};
  const BarContent bar{.fraction = 0.5, .track = gray, .fill = blue, .cornerRadius = 3};
  const RingContent ring{.fraction = 0.5, .lineWidth = 4, .track = gray, .arc = blue};
  const SegmentedPickerContent picker{{key("1m"), key("5m")}, 0, {}};
  const SliderContent slider{.value = 5, .max = 10};
  const DayChartContent days{
      .days = {key("1"), key("2")},
      .series = {{.mark = DayChartContent::Mark::bars, .figures = {1, 2}, .color = blue}},
      .scaleText = [](double) { return std::string(); }};
  return {
      {"text", verbatimText("a"), verbatimText("b")},
      {"symbol", SymbolContent{"cpu"}, SymbolContent{"gearshape"}},
      {"icon", IconContent{"", "cpu"}, IconContent{"", "gearshape"}},
      change("height of a point", lines, [](auto& to) { to.lines[0].heights[0] = 1; }),
      change("width of a line", lines, [](auto& to) { to.lineWidth = 2; }),
      change("figure of a day", days, [](auto& to) { to.series[0].figures[0] = 2; }),
      change("labels of the days", days, [](auto& to) { to.days[1] = key("3"); }),
      change("unit of the scale", days, [](auto& to) { to.scaleUnit = 5; }),
      change("fraction of a bar", bar, [](auto& to) { to.fraction = 0.7; }),
      change("track of a bar", bar, [](auto& to) { to.track = Color::rgb(1, 0, 0); }),
      change("fill of a bar", bar, [](auto& to) { to.fill = gray; }),
      change("corners of a bar", bar, [](auto& to) { to.cornerRadius = 0; }),
      change("fraction of a ring", ring, [](auto& to) { to.fraction = 0.7; }),
      change("track of a ring", ring, [](auto& to) { to.track = Color::rgb(1, 0, 0); }),
      change("arc of a ring", ring, [](auto& to) { to.arc = gray; }),
      change("width of a ring", ring, [](auto& to) { to.lineWidth = 2; }),
      change("labels of a picker", picker, [](auto& to) { to.labels[1] = key("9m"); }),
      change("choice of a picker", picker, [](auto& to) { to.selected = 1; }),
      {"switch", SwitchContent{false, {}}, SwitchContent{true, {}}},
      change("value of a slider", slider, [](auto& to) { to.value = 7; }),
      change("lower limit of a slider", slider, [](auto& to) { to.min = -10; }),
      change("upper limit of a slider", slider, [](auto& to) { to.max = 20; }),
  };
}

TEST(LeafRepaint, followsEachChangeAndNothingElse) {
  for (const auto& [name, before, after] : changes()) {
    SCOPED_TRACE(name);
    LeafStage fresh;
    fresh.put(after, {90, 50});
    LeafStage stage;
    Leaf& leaf = stage.put(before, {90, 50});
    stage.showWindow();
    ASSERT_NE(stage.picture(), fresh.picture());
    settle();
    PaintCounter paints(leaf);
    leaf.show(before, {});
    settle();
    EXPECT_EQ(paints.count, 0);
    leaf.show(after, {});
    settle();
    EXPECT_GT(paints.count, 0);
    EXPECT_EQ(stage.picture(), fresh.picture());

    paints.count = 0;
    leaf.show(after, {.opacity = 0.5});
    settle();
    EXPECT_GT(paints.count, 0);
    EXPECT_NE(stage.picture(), fresh.picture());
  }
}

TEST(LeafRepaint, fillsItsBackdrop) {
  LeafStage stage;
  const Color backdrop = Color::rgb(1, 1, 0);
  for (const auto& [name, content, other] : changes()) {
    Leaf& leaf = stage.put(content, {90, 50});
    EXPECT_FALSE(leaf.testAttribute(Qt::WA_OpaquePaintEvent)) << name;
    const QImage over = stage.picture(stage.theme.color(backdrop));
    leaf.show(content, {.backdrop = backdrop});
    EXPECT_TRUE(leaf.testAttribute(Qt::WA_OpaquePaintEvent)) << name;
    EXPECT_EQ(stage.picture(), over) << name;
  }
}

TEST(LeafSymbol, isAsLargeAsTheTextBesideIt) {
  LeafStage stage;
  const LeafMetrics metrics = stage.put(SymbolContent{"cpu"}, {16, 16}).measure({});
  EXPECT_EQ(metrics.size, (Size{16, 16}));
  EXPECT_EQ(metrics.baseline, 13);
}

TEST(LeafMouse, reachesTheWidgetsAround) {
  LeafStage stage;
  QTest::mouseClick(&stage.put(verbatimText("a row"), {50, 20}), Qt::LeftButton);
  EXPECT_EQ(stage.window.presses, 1);
}

TEST(LeafIcon, opensOnlyRegularFilesOfASensibleSize) {
  const QTemporaryDir folder;
  const QString icon = folder.filePath("icon.png");
  QImage image(16, 16, QImage::Format_RGB32);
  image.fill(Qt::blue);
  ASSERT_TRUE(image.save(icon));
  const QString large = folder.filePath("large.png");
  ASSERT_TRUE(QFile::copy(icon, large) && QFile::resize(large, (4 << 20) + 1));
  const QString pipe = folder.filePath("pipe.png");
  ASSERT_EQ(mkfifo(pipe.toLocal8Bit().constData(), 0600), 0);
  LeafStage stage;
  stage.put(IconContent{"", "cpu"}, {16, 16});
  const QImage fallback = stage.picture();
  for (const QString& name : {icon, large, pipe}) {
    stage.put(IconContent{.name = name.toStdString(), .fallbackSymbol = "cpu"}, {16, 16});
    const QImage shown = stage.picture();
    EXPECT_EQ(shown.pixelColor(8, 8) == Qt::blue, name == icon) << name.toStdString();
    EXPECT_EQ(shown == fallback, name != icon) << name.toStdString();
  }
}

}  // namespace
}  // namespace kestrune::ui::qt
