#include <QMouseEvent>
#include <QProxyStyle>
#include <QTemporaryDir>
#include <QToolTip>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "ui/qt/LeafSupport.h"

namespace kestrune::ui::qt {
namespace {

constexpr Color blue = Color::rgb(0, 0, 1);
constexpr Color gray = Color::rgb(0.5, 0.5, 0.5);

BarContent bar(double fraction) {
  return {.fraction = fraction, .track = gray, .fill = blue, .cornerRadius = 3, .animationSeconds = 0.4};
}

bool isBlue(const QColor& color) {
  return color.blue() > 200 && color.red() < 60;
}

int filledPixels(const LeafStage& stage) {
  const QImage image = stage.picture();
  int count = 0;
  for (int x = 0; x < image.width(); ++x) count += isBlue(image.pixelColor(x, image.height() / 2)) ? 1 : 0;
  return count;
}

class NoAnimations : public QProxyStyle {
 public:
  int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                QStyleHintReturn* data) const override {
    return hint == SH_Widget_Animation_Duration ? 0 : QProxyStyle::styleHint(hint, option, widget, data);
  }
};

TEST(LeafBar, EasesToAnotherFractionWhereThatIsSeen) {
  LeafStage stage;
  AnimationDriver& driver = stage.theme.animations();
  Leaf& leaf = stage.put(bar(0.2), 100, 5);
  EXPECT_FALSE(driver.isRunning()) << "appears in place";
  for (const auto& [fraction, pixels] : {std::pair{1.4, 100}, {-0.1, 0}, {std::nan(""), 0}}) {
    leaf.show(bar(fraction), {});
    EXPECT_NEAR(filledPixels(stage), pixels, 1) << fraction;
  }
  leaf.show(bar(0.3), {});
  EXPECT_FALSE(driver.isRunning()) << "not visible";
  EXPECT_NEAR(filledPixels(stage), 30, 1);

  stage.showWindow();
  const double start = AnimationDriver::now();
  leaf.show(bar(0.7), {});
  ASSERT_TRUE(driver.isRunning());
  EXPECT_NEAR(filledPixels(stage), 30, 1);
  driver.advance(start + 0.1);
  EXPECT_NEAR(filledPixels(stage), 35, 3);  // a quarter of the time, an eighth of the way
  leaf.show(bar(0.7), {});
  driver.advance(start + 0.2);
  EXPECT_NEAR(filledPixels(stage), 50, 3);
  driver.advance(start + 9);
  EXPECT_NEAR(filledPixels(stage), 70, 1);
  EXPECT_FALSE(driver.isRunning());

  auto* style = new NoAnimations;
  style->setParent(&leaf);
  leaf.setStyle(style);
  leaf.show(bar(0.1), {});
  EXPECT_FALSE(driver.isRunning()) << "the desktop asks for none";
  EXPECT_NEAR(filledPixels(stage), 10, 1);
}

TEST(LeafLineChart, TellsTheNearestPoint) {
  LeafStage stage;
  LineChartContent chart{.lines = {{{0, 0.5, 1}, gray}}, .readOut = [](std::size_t point) {
                           return std::vector{key("point "), verbatimText(std::to_string(point))};
                         }};
  Leaf& leaf = stage.put(chart, 100, 20);
  stage.showWindow();
  const auto point = [&leaf](int x) {
    QMouseEvent event(QEvent::MouseMove, QPointF(x, 5), leaf.mapToGlobal(QPointF(x, 5)), Qt::NoButton,
                      Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(&leaf, &event);
    return QToolTip::text().toStdString();
  };
  EXPECT_EQ(point(1), "point 0");
  EXPECT_EQ(point(60), "point 1");
  const QImage marked = stage.picture();
  EXPECT_NE(marked.pixelColor(50, 2), QColor(Qt::white));
  EXPECT_EQ(marked.pixelColor(25, 2), QColor(Qt::white));

  chart.lines[0].heights = {0, 1};
  leaf.show(chart, {});
  EXPECT_EQ(QToolTip::text().toStdString(), "point 1") << "follows the figures under a pointer at rest";
  QEvent leave(QEvent::Leave);
  QApplication::sendEvent(&leaf, &leave);
  EXPECT_EQ(stage.picture().pixelColor(50, 2), QColor(Qt::white));
}

TEST(LeafLineChart, DrawsFromEdgeToEdgeAndRepaintsOnlyForAChange) {
  LeafStage stage;
  const LineChartContent level{{{{0.5, 0.5}, blue}}, 4};
  Leaf& leaf = stage.put(level, 50, 20);
  EXPECT_TRUE(isBlue(stage.picture().pixelColor(0, 10)));
  EXPECT_TRUE(isBlue(stage.picture().pixelColor(49, 9)));
  EXPECT_EQ(stage.picture().pixelColor(25, 2), QColor(Qt::white));

  stage.showWindow();
  PaintCounter paints(leaf);
  leaf.show(level, {});
  settle();
  EXPECT_EQ(paints.count, 0);
  leaf.show(LineChartContent{{{{0, 1}, blue}, {{1}, gray}, {{}, gray}}, 4}, {});
  settle();
  EXPECT_EQ(paints.count, 1);
  EXPECT_TRUE(isBlue(stage.picture().pixelColor(0, 19)));
  EXPECT_TRUE(isBlue(stage.picture().pixelColor(49, 0)));
  leaf.show(LineChartContent{{{{1, 1}, blue}}, 4}, {});
  EXPECT_TRUE(isBlue(stage.picture().pixelColor(25, 0)));
  EXPECT_TRUE(isBlue(stage.picture().pixelColor(25, 3))) << "as thick at the top as anywhere";
}

TEST(LeafMouse, GoesToWhatLiesAround) {
  class Catcher : public QWidget {
   public:
    int presses = 0;

   protected:
    void mousePressEvent(QMouseEvent*) override { ++presses; }
  } around;
  const Catalogue catalogue{};
  Theme theme(catalogue);
  const Content content = verbatimText("a row");
  Leaf* leaf = makeLeaf(content, theme, &around);
  leaf->show(content, {});
  leaf->setGeometry(0, 0, 50, 20);
  QMouseEvent press(QEvent::MouseButtonPress, QPointF(5, 5), leaf->mapToGlobal(QPointF(5, 5)), Qt::LeftButton,
                    Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(leaf, &press);
  EXPECT_EQ(around.presses, 1);
}

TEST(LeafIcon, OpensNothingButFiles) {
  const QTemporaryDir folder;
  const std::string pipe = folder.filePath("pipe.png").toStdString();
  const std::string file = folder.filePath("icon.png").toStdString();
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  QImage image(16, 16, QImage::Format_RGB32);
  image.fill(Qt::blue);
  ASSERT_TRUE(image.save(QString::fromStdString(file)));
  LeafStage stage;
  for (const auto& [name, isPicture] : {std::pair{file, true}, {pipe, false}}) {
    stage.put(IconContent{.name = name, .fallbackSymbol = "cpu"}, 16, 16);
    const QImage shown = stage.picture();
    EXPECT_EQ(isBlue(shown.pixelColor(8, 8)), isPicture) << name;
    QImage blank = shown;
    blank.fill(Qt::white);
    EXPECT_NE(shown, blank) << "a symbol stands for it";
  }
}

}  // namespace
}  // namespace kestrune::ui::qt
