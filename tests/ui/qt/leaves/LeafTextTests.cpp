#include <QAccessible>
#include <QHelpEvent>
#include <QToolTip>
#include <gtest/gtest.h>

#include "ui/qt/LeafSupport.h"
#include "ui/qt/leaves/LeafAccessibility.h"
#include "ui/qt/leaves/TextShape.h"

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

TEST(LeafText, wrapsOrIsElided) {
  LeafStage stage;
  Leaf& leaf = stage.put(verbatimText("several words in a row"), {10, 10});
  const LeafMetrics natural = leaf.measure({});
  EXPECT_EQ(leaf.measure({unlimited, 5}).size, natural.size);
  EXPECT_GT(natural.baseline, natural.size.height / 2);

  const Size wrapped = leaf.measure({natural.size.width / 2, {}}).size;
  EXPECT_LE(wrapped.width, natural.size.width / 2);
  EXPECT_GE(wrapped.height, 2 * natural.size.height);
  EXPECT_EQ(leaf.measure({natural.size.width / 2, {}}).baseline, natural.baseline);

  Leaf& limited = stage.put(oneLine("several words in a row"), {10, 10});
  EXPECT_EQ(limited.measure({50.0, {}}).size, (Size{50, natural.size.height}));
  EXPECT_LT(limited.measure({0.0, {}}).size.width, 40);

  limited.resize(300, 20);
  const QImage whole = stage.picture();
  limited.resize(60, 20);
  EXPECT_EQ(stage.picture().copy(0, 0, 30, 20), whole.copy(0, 0, 30, 20)) << "is cut at its end";
}

TEST(LeafText, needsLayoutOnlyIfItsSizeMayDiffer) {
  LeafStage stage;
  const LeafStyle digits = {.font = {14, FontWeight::medium, true}};
  Leaf& leaf = stage.put(verbatimText("33%"), {100, 20}, digits);
  leaf.measure({});
  EXPECT_FALSE(leaf.show(verbatimText("33%"), digits));
  EXPECT_FALSE(leaf.show(verbatimText("71%"), digits));
  EXPECT_TRUE(leaf.show(verbatimText("100%"), digits));
  EXPECT_TRUE(leaf.show(verbatimText("100%"), {.font = {15, FontWeight::medium, true}}));

  // Equally wide on one line, but wrapped differently.
  const double half = stage.put(verbatimText("aaaa aaaaaaaa"), {9, 9}).measure({}).size.width + 1;
  Leaf& wrapping = stage.put(verbatimText("aaaa aaaaaaaa aaaa aaaaaaaa"), {9, 9});
  const Size two = wrapping.measure({half, {}}).size;
  EXPECT_FALSE(wrapping.show(verbatimText("aaaaaaaa aaaa aaaaaaaa aaaa"), {}));
  EXPECT_EQ(wrapping.measure({half, {}}).size, two);
  EXPECT_TRUE(wrapping.show(verbatimText("aaaaaaaa aaaaaaaa aaaa aaaa"), {}));
  EXPECT_EQ(wrapping.measure({half, {}}).size.height, two.height * 1.5);
}

TEST(LeafText, showsDataVerbatim) {
  LeafStage stage;
  const double lineHeight = stage.put(verbatimText("x"), {9, 9}).measure({}).size.height;
  Leaf& wild = stage.put(verbatimText("<b>evil</b>\nname\tof\r\na process"), {60, 20});
  EXPECT_EQ(wild.measure({}).size.height, lineHeight);

  Leaf& cut = stage.put(oneLine("<b>evil</b>\nname"), {60, 20});
  EXPECT_EQ(cut.accessibleName(), "<b>evil</b> name");
  stage.showWindow();
  EXPECT_TRUE(toolTipOver(cut).contains("&lt;b&gt;evil&lt;/b&gt; name")) << toolTipOver(cut).toStdString();

  Leaf& whole = stage.put(oneLine("fits"), {60, 20});
  EXPECT_EQ(toolTipOver(whole), QString());
}

TEST(LeafAccessibility, skipsDecoration) {
  installLeafAccessibility();
  LeafStage stage;
  const auto of = [](Leaf& leaf) { return QAccessible::queryAccessibleInterface(&leaf); };
  auto* text = of(stage.put(verbatimText("33%"), {50, 20}));
  EXPECT_EQ(text->role(), QAccessible::StaticText);
  EXPECT_EQ(text->text(QAccessible::Name), "33%");
  EXPECT_EQ(text->childCount(), 0);

  auto* hidden = of(stage.put(verbatimText("33%"), {50, 20}, {.isAccessibilityHidden = true}));
  EXPECT_TRUE(hidden->state().invisible);

  stage.showWindow();
  auto* symbol = of(stage.put(SymbolContent{"cpu"}, {16, 16}));
  EXPECT_TRUE(symbol->state().invisible);
  auto* chart =
      of(stage.put(LineChartContent{}, {16, 16}, {.accessibilityLabel = verbatimText("Metric trend")}));
  EXPECT_EQ(chart->text(QAccessible::Name), "Metric trend");
  EXPECT_EQ(chart->role(), QAccessible::Graphic);
  EXPECT_FALSE(chart->state().invisible);
}

}  // namespace
}  // namespace kestrune::ui::qt
