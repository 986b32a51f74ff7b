#include <QProxyStyle>
#include <QToolTip>
#include <gtest/gtest.h>

#include "ui/qt/LeafSupport.h"
#include "ui/qt/charts/DayChartLeaf.h"

namespace kestrune::ui::qt {
namespace {

using Mark = DayChartContent::Mark;
using Heights = std::vector<double>;

constexpr Color red = Color::rgb(1, 0, 0);
constexpr Color white = Color::rgb(1, 1, 1);
constexpr auto none = std::nullopt;
const double nan = std::nan("");

BarContent bar(double fraction) {
  return {.fraction = fraction, .track = gray, .fill = blue, .animationSeconds = 0.4};
}
RingContent ring(double fraction) {
  return {.fraction = fraction, .lineWidth = 8, .track = gray, .arc = blue};
}
LineChartContent lines(Heights first, Heights second = {}, Heights third = {}) {
  return {{{std::move(first), blue}, {std::move(second), red}, {std::move(third), gray}}, 4};
}
// Without words, 6 pixels above the plot, 16 below and 6 at the right are left to the scale.
DayChartContent days(std::vector<DayChartContent::Series> series) {
  DayChartContent chart{.series = std::move(series), .scaleUnit = 25};
  chart.days.resize(chart.series[0].figures.size(), verbatimText(""));
  chart.scaleText = [](double) { return std::string(); };
  return chart;
}
SegmentedPickerContent picker(int selected) {
  return {{verbatimText(""), verbatimText(""), verbatimText("")}, selected, {}};
}

bool isNear(const QColor& one, const QColor& other) {
  return std::abs(one.red() - other.red()) + std::abs(one.green() - other.green()) +
             std::abs(one.blue() - other.blue()) <=
         6;
}

// The row ('x') or column ('y') of pixels at `at`, as lengths of runs of one colour; '?' is a mixture.
std::string runs(LeafStage& stage, char direction, int at) {
  const auto faint = [](double opacity) { return Color(ColorRole::primary, opacity); };
  const std::map<char, Color> names{
      {'b', blue},        {'g', gray},        {'r', red},         {'w', white},      {'a', ColorRole::accent},
      {'i', faint(0.08)}, {'j', faint(0.12)}, {'k', faint(0.14)}, {'l', faint(0.18)}};
  const QTransform turned(0, 1, 1, 0, 0, 0);
  const QImage image = direction == 'x' ? stage.picture() : stage.picture().transformed(turned);
  std::string text;
  for (int x = 0, length = 0; x < image.width(); ++x) {
    const auto nameOf = [&](int i) {
      const auto named = std::ranges::find_if(names, [&](const auto& name) {
        const QColor color = stage.theme.color(name.second);
        return isNear(image.pixelColor(i, at), mixed(Qt::white, QColor(color.rgb()), color.alphaF()));
      });
      return named == names.end() ? '?' : named->first;
    };
    ++length;
    if (x + 1 < image.width() && nameOf(x) == nameOf(x + 1)) continue;
    text += std::to_string(std::exchange(length, 0)) + nameOf(x) + ' ';
  }
  return text;
}

TEST(LeafDrawing, hasEachColorInItsPlace) {
  struct Drawing {
    Content content;
    QSize size;
    char direction;
    int at;
    const char* expected;
  };
  const DayChartContent stacked = days({{Mark::bars, {25, none}, blue}, {Mark::bars, {50, 75}, red}});
  const DayChartContent area = days({{Mark::area, {50, 50, none, 100}, blue}});
  const DayChartContent line = days({{Mark::line, {50, 50, none, 100}, blue}});
  const Drawing drawings[] = {
      {bar(0.25), {20, 6}, 'x', 3, "5b 15g "},
      {bar(1.4), {20, 6}, 'x', 3, "20b "},
      {bar(-0.1), {20, 6}, 'x', 3, "20g "},
      {bar(nan), {20, 6}, 'x', 3, "20g "},
      {ring(0.25), {40, 60}, 'x', 22, "1w 1? 8g 1? 17w 2? 8b 1? 1w "},
      {ring(0.25), {40, 60}, 'x', 37, "1w 1? 8g 1? 18w 1? 8g 1? 1w "},
      {ring(0.75), {40, 40}, 'x', 12, "1w 1? 8g 1? 17w 2? 8b 1? 1w "},
      {ring(0.75), {40, 40}, 'x', 27, "1w 1? 8b 2? 16w 2? 8b 1? 1w "},
      {ring(0.0001), {40, 40}, 'x', 4, "7w 1? 8g 1? 7b 1? 7g 1? 7w "},
      {ring(1), {40, 40}, 'x', 4, "7w 1? 24b 1? 7w "},
      {ring(0), {40, 40}, 'x', 4, "7w 1? 24g 1? 7w "},
      {lines({0.5, 0.5}), {50, 20}, 'y', 25, "8w 4b 8w "},
      {lines({1, 1}, {0, nan}, {1}), {50, 20}, 'y', 0, "4b 12w 4r "},
      {DividerContent{}, {40, 9}, 'y', 39, "4w 1k 4w "},
      {DividerContent{}, {9, 40}, 'x', 39, "4w 1k 4w "},
      {SwitchContent{true, {}}, {34, 20}, 'x', 10, "1? 14a 2? 14w 3? "},
      {SwitchContent{false, {}}, {34, 20}, 'x', 10, "1l 2? 14w 2? 15l "},
      {SliderContent{.value = 5, .max = 10}, {116, 22}, 'x', 11, "1? 48a 2? 14w 1? 1l 49j "},
      {SliderContent{.value = 20, .max = 10}, {116, 22}, 'x', 11, "1? 98a 2? 14w 1? "},
      {picker(0), {154, 24}, 'x', 12, "1i 1j 50w 1j 49i 1? 51i "},
      {stacked, {46, 62}, 'y', 10, "6w 26r 1? 13b 1l 15w "},
      {stacked, {46, 62}, 'x', 43, "2w 16b 4w 16r 8w "},
      {area, {86, 62}, 'x', 40, "10w 20b 37w 1? 4b 1? 13w "},
      {line, {86, 62}, 'x', 26, "9i 1? 20b 1? 49i 6w "},
      {line, {86, 62}, 'x', 6, "67i 1? 4b 1? 7i 6w "},
  };
  LeafStage stage;
  for (const auto& [content, size, direction, at, expected] : drawings) {
    stage.put(content, size);
    EXPECT_EQ(runs(stage, direction, at), expected);
  }
}

class NoAnimations : public QProxyStyle {
 public:
  int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                QStyleHintReturn* data) const override {
    return hint == SH_Widget_Animation_Duration ? 0 : QProxyStyle::styleHint(hint, option, widget, data);
  }
};

TEST(LeafBar, easesToAnotherFractionIfThatIsSeen) {
  LeafStage stage;
  AnimationDriver& driver = stage.theme.animations();
  Leaf& leaf = stage.put(bar(0.2), {100, 5});
  const auto filled = [&stage] {
    const QImage image = stage.frame();
    int x = 0;
    while (isNear(image.pixelColor(x, 2), Qt::blue)) ++x;
    return x;
  };
  EXPECT_FALSE(driver.isRunning()) << "appears in place";
  leaf.show(bar(0.3), {});
  EXPECT_FALSE(driver.isRunning()) << "not visible";
  stage.showWindow();
  const double start = AnimationDriver::now();
  leaf.show(bar(0.7), {});
  ASSERT_TRUE(driver.isRunning());
  EXPECT_EQ(filled(), 30);
  driver.advance(start + 0.1);
  EXPECT_NEAR(filled(), 35, 3) << "a quarter of the time, an eighth of the way";
  leaf.show(bar(0.7), {});
  driver.advance(start + 0.2);
  EXPECT_NEAR(filled(), 50, 3);
  driver.advance(start + 9);
  EXPECT_EQ(filled(), 70);
  EXPECT_FALSE(driver.isRunning());
  leaf.show(bar(0.71), {});
  EXPECT_FALSE(driver.isRunning()) << "a single step";
  NoAnimations style;
  leaf.setStyle(&style);
  leaf.show(bar(0.1), {});
  EXPECT_FALSE(driver.isRunning()) << "the desktop asks for reduced motion";
  EXPECT_EQ(filled(), 10);
}

TEST(LeafSwitch, slidesIfThatIsSeenAndReportsOnlyTheUser) {
  LeafStage stage;
  std::vector<bool> chosen;
  const auto choose = [&](bool isOn) { chosen.push_back(isOn); };
  AnimationDriver& driver = stage.theme.animations();
  stage.showWindow();
  Leaf& leaf = stage.put(SwitchContent{true, choose}, {34, 20});
  EXPECT_FALSE(driver.isRunning());
  leaf.show(SwitchContent{false, choose}, {});
  driver.advance(AnimationDriver::now() + 0.1);
  EXPECT_TRUE(driver.isRunning());
  driver.advance(AnimationDriver::now() + 0.15);
  EXPECT_FALSE(driver.isRunning());
  QTest::mouseClick(&leaf, Qt::LeftButton);
  EXPECT_EQ(chosen, std::vector{true});
}

TEST(DayChart, scalesEndAboveAtRoundFigures) {
  EXPECT_EQ(roundScale(0, 1), (Heights{0, 1}));
  EXPECT_EQ(roundScale(100, 1), (Heights{0, 50, 100}));
  EXPECT_EQ(roundScale(101, 1), (Heights{0, 50, 100, 150}));
  for (const double highest : {1e-9, 3.0, 39.0, 1024.0, 2.5e12}) {
    const auto scale = roundScale(highest, 0.1);
    EXPECT_GE(scale.back(), highest * (1 - 1e-9));
    EXPECT_LE(scale.size(), 6U) << highest;
  }
}

TEST(LeafChart, describesThePointUnderThePointer) {
  LineChartContent line = lines({0, 0.5, 1});
  DayChartContent bars = days({{Mark::bars, {20, 40, 100}, gray}});
  line.readOut = bars.readOut = [](std::size_t point) {
    return std::vector{key("point "), verbatimText(std::to_string(point))};
  };
  // The last x of the first point, and the first x of the second.
  const std::tuple<Content, int, int> charts[] = {{line, 38, 40}, {bars, 49, 50}};
  for (const auto& [content, last, next] : charts) {
    LeafStage stage;
    stage.showWindow();
    Leaf& leaf = stage.put(content, {156, 122});
    const QImage unmarked = stage.picture();
    const auto textAt = [&leaf](int x) {
      hover(leaf, {x, 40});
      return QToolTip::text().toStdString();
    };
    EXPECT_EQ(textAt(last), "point 0");
    EXPECT_EQ(textAt(next), "point 1");
    const QImage marked = stage.picture();
    EXPECT_NE(marked.pixelColor(78, 30), unmarked.pixelColor(78, 30));
    EXPECT_EQ(marked.pixelColor(30, 30), unmarked.pixelColor(30, 30));
    EXPECT_EQ(textAt(145), "point 2");
    leaf.repaint();
    PaintCounter paints(leaf);
    hover(stage.window, {300, 150});
    EXPECT_TRUE(QTest::qWaitFor([&paints] { return paints.count > 0; }));
    EXPECT_EQ(stage.picture(), unmarked);
  }
  LeafStage stage;
  stage.showWindow();
  Leaf& leaf = stage.put(line, {156, 122});
  hover(leaf, {145, 40});
  line.lines[0].heights = {0, 1};
  leaf.show(line, {});
  EXPECT_EQ(QToolTip::text(), "point 1") << "follows the figures under a pointer at rest";
}

}  // namespace
}  // namespace kestrune::ui::qt
