#include <QAccessible>
#include <QHelpEvent>
#include <QToolTip>
#include <gtest/gtest.h>

#include "LeafSupport.h"
#include "ui/qt/LeafAccessibility.h"
#include "ui/qt/TextShape.h"

namespace kestrune::ui::qt {
namespace {

TextContent oneLine(std::string data) {
  TextContent content = verbatimText(std::move(data));
  content.lineLimit = 1;
  return content;
}

QString toolTipOver(QWidget& widget) {
  QToolTip::hideText();
  QHelpEvent event(QEvent::ToolTip, QPoint(2, 2), widget.mapToGlobal(QPoint(2, 2)));
  QApplication::sendEvent(&widget, &event);
  return QToolTip::text();
}

TEST(LeafText, TakesOneLineWrapsOrCutsShort) {
  LeafStage stage;
  Leaf& leaf = stage.put(verbatimText("several words in a row"), 10, 10);
  const LeafMetrics natural = leaf.measure({});
  EXPECT_EQ(leaf.measure({unlimited, 5}).size, natural.size);
  EXPECT_GT(natural.baseline, natural.size.height / 2);

  const Size wrapped = leaf.measure({natural.size.width / 2, {}}).size;
  EXPECT_LE(wrapped.width, natural.size.width / 2);
  EXPECT_GE(wrapped.height, 2 * natural.size.height);
  EXPECT_EQ(leaf.measure({natural.size.width / 2, {}}).baseline, natural.baseline);

  Leaf& limited = stage.put(oneLine("several words in a row"), 10, 10);
  EXPECT_EQ(limited.measure({50.0, {}}).size, (Size{50, natural.size.height}));
  EXPECT_LT(limited.measure({0.0, {}}).size.width, 40);
}

TEST(LeafText, AsksForALayoutOnlyWhenItsSizeMayDiffer) {
  LeafStage stage;
  const LeafStyle digits = styled([](LeafStyle& style) { style.font = {14, FontWeight::medium, true}; });
  Leaf& leaf = stage.put(verbatimText("33%"), 100, 20, digits);
  leaf.measure({});
  EXPECT_FALSE(leaf.show(verbatimText("33%"), digits));
  EXPECT_FALSE(leaf.show(verbatimText("71%"), digits));
  EXPECT_TRUE(leaf.show(verbatimText("100%"), digits));
  EXPECT_TRUE(leaf.show(verbatimText("100%"), styled([](LeafStyle& style) {
                          style.font = {15, FontWeight::medium, true};
                        })));

  // The same width on one line, but not the same lines.
  const double half = stage.put(verbatimText("aaaa aaaaaaaa"), 9, 9).measure({}).size.width + 1;
  Leaf& wrapping = stage.put(verbatimText("aaaa aaaaaaaa aaaa aaaaaaaa"), 9, 9);
  const Size two = wrapping.measure({half, {}}).size;
  EXPECT_FALSE(wrapping.show(verbatimText("aaaaaaaa aaaa aaaaaaaa aaaa"), {}));
  EXPECT_EQ(wrapping.measure({half, {}}).size, two);
  EXPECT_TRUE(wrapping.show(verbatimText("aaaaaaaa aaaaaaaa aaaa aaaa"), {}));
  EXPECT_EQ(wrapping.measure({half, {}}).size.height, two.height * 1.5);
}

TEST(LeafText, RepaintsOnlyForAChange) {
  LeafStage stage;
  Leaf& leaf = stage.put(verbatimText("one"), 100, 20);
  stage.showWindow();
  PaintCounter paints(leaf);
  leaf.show(verbatimText("one"), {});
  settle();
  EXPECT_EQ(paints.count, 0);
  leaf.show(verbatimText("two"), {});
  settle();
  EXPECT_EQ(paints.count, 1);
  leaf.show(verbatimText("two"), styled([](LeafStyle& style) { style.foreground = ColorRole::red; }));
  settle();
  EXPECT_EQ(paints.count, 2);
}

TEST(LeafText, ShowsDataAsItIs) {
  LeafStage stage;
  const double lineHeight = stage.put(verbatimText("x"), 9, 9).measure({}).size.height;
  Leaf& wild = stage.put(verbatimText("<b>evil</b>\nname\tof\r\na process"), 60, 20);
  EXPECT_EQ(wild.measure({}).size.height, lineHeight);

  Leaf& cut = stage.put(oneLine("<b>evil</b>\nname"), 60, 20);
  EXPECT_EQ(cut.accessibleName(), "<b>evil</b> name");
  stage.showWindow();
  EXPECT_TRUE(toolTipOver(cut).contains("&lt;b&gt;evil&lt;/b&gt; name")) << toolTipOver(cut).toStdString();

  Leaf& whole = stage.put(oneLine("fits"), 60, 20);
  EXPECT_EQ(toolTipOver(whole), QString());
}

TEST(LeafText, CentresDigitsInCells) {
  const QFont font = QGuiApplication::font();
  constexpr double cell = 30;
  const TextLine ones = shapeLine("1a1", font, cell);
  const TextLine mixed = shapeLine("8a0", font, cell);
  EXPECT_DOUBLE_EQ(ones.width, mixed.width);
  ASSERT_EQ(ones.runs.size(), 3);
  const double letter = ones.width - 2 * cell;
  EXPECT_GT(letter, 0);
  // From the first digit to the last, one cell and the letter.
  EXPECT_NEAR(ones.runs[2].positions()[0].x() - ones.runs[0].positions()[0].x(), cell + letter, 0.01);
  EXPECT_GT(ones.runs[0].positions()[0].x(), 5);
}

TEST(LeafText, FillsItsBackdropAndAppliesItsOpacity) {
  LeafStage stage;
  stage.put(verbatimText(""), 20, 20, styled([](LeafStyle& style) { style.backdrop = Color::rgb(0, 0, 1); }));
  EXPECT_EQ(stage.picture().pixelColor(3, 3), QColor(0, 0, 255));
  const LeafStyle faint = styled([](LeafStyle& style) {
    style.font.size = 20;
    style.foreground = Color::rgb(0, 0, 0);
    style.opacity = 0.5;
  });
  stage.put(verbatimText("███"), 20, 20, faint);
  EXPECT_NEAR(stage.picture().pixelColor(8, 12).red(), 127, 3);
}

TEST(LeafAccessibility, SpeaksUnlessItIsDecoration) {
  installLeafAccessibility();
  LeafStage stage;
  const auto of = [](Leaf& leaf) { return QAccessible::queryAccessibleInterface(&leaf); };
  auto* text = of(stage.put(verbatimText("33%"), 50, 20));
  EXPECT_EQ(text->role(), QAccessible::StaticText);
  EXPECT_EQ(text->text(QAccessible::Name), "33%");
  EXPECT_EQ(text->childCount(), 0);

  auto* hidden = of(stage.put(verbatimText("33%"), 50, 20,
                              styled([](LeafStyle& style) { style.isAccessibilityHidden = true; })));
  EXPECT_TRUE(hidden->state().invisible);

  stage.showWindow();
  auto* symbol = of(stage.put(SymbolContent{"cpu"}, 16, 16));
  EXPECT_TRUE(symbol->state().invisible);
  auto* chart = of(stage.put(LineChartContent{}, 16, 16, styled([](LeafStyle& style) {
                               style.accessibilityLabel = verbatimText("Metric trend");
                             })));
  EXPECT_EQ(chart->text(QAccessible::Name), "Metric trend");
  EXPECT_EQ(chart->role(), QAccessible::Graphic);
  EXPECT_FALSE(chart->state().invisible);
}

}  // namespace
}  // namespace kestrune::ui::qt
