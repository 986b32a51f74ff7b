#include <QAccessible>
#include <gtest/gtest.h>

#include "ui/qt/LeafSupport.h"
#include "ui/qt/leaves/LeafAccessibility.h"
#include "ui/qt/mount/Surface.h"

namespace kestrune::ui::qt {
namespace {

using Acted = std::function<void()>;

SegmentedPickerContent ranges(int selected, std::function<void(int)> onSelect) {
  return {{key("60s"), key("5m"), key("1h")}, selected, std::move(onSelect)};
}
Content choice(Acted acted) {
  return ranges(0, [acted](int) { acted(); });
}
Content onOrOff(Acted acted) {
  return SwitchContent{false, [acted](bool) { acted(); }};
}
Content number(Acted acted) {
  return SliderContent{.value = 20, .max = 100, .onChange = [acted](double) { acted(); }};
}

void press(QAccessibleInterface* spoken) {
  spoken->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
}

struct Control {
  const char* name;
  // Null for a button, which is a surface.
  Content (*content)(Acted acted);
  QSize size;
  // A click here acts, and so does the key after it.
  QPoint place;
  Qt::Key key;
  bool actsOnPress;
  bool showsHover;
};

const Control controls[] = {
    {"button", nullptr, {80, 24}, {40, 12}, Qt::Key_Return, false, true},
    {"switch", onOrOff, {34, 20}, {17, 10}, Qt::Key_Space, false, false},
    {"slider", number, {116, 22}, {90, 11}, Qt::Key_Right, true, false},
    {"picker", choice, {150, 24}, {75, 12}, Qt::Key_End, true, true},
};

class LeafControl : public testing::TestWithParam<Control> {
 protected:
  void SetUp() override {
    installLeafAccessibility();
    installSurfaceAccessibility();
    stage.showWindow();
    widget = put(stage, control.size);
  }

  QWidget* put(LeafStage& on, QSize size) {
    if (control.content != nullptr) return &on.put(control.content([this] { act(); }), size);
    auto* button = new Surface(on.theme, &on.window);
    button->setBehaviour({.role = Surface::Role::button, .onTap = [this] { act(); }, .takesFocus = true});
    on.put(*button, size);
    return button;
  }
  void act() {
    ++acted;
    if (replaced) replaced();
  }
  void click(Qt::MouseButton button = Qt::LeftButton) {
    QTest::mouseClick(widget, button, {}, control.place);
  }
  void actByAssistiveTool() {
    QAccessibleInterface* spoken = QAccessible::queryAccessibleInterface(widget);
    if (auto* value = spoken->valueInterface()) return value->setCurrentValue(70);
    press(spoken->childCount() == 0 ? spoken : spoken->child(2));
  }

  const Control control = GetParam();
  LeafStage stage;
  QWidget* widget = nullptr;
  int acted = 0;
  Acted replaced;
};

INSTANTIATE_TEST_SUITE_P(Each, LeafControl, testing::ValuesIn(controls),
                         [](const auto& each) { return std::string(each.param.name); });

TEST_P(LeafControl, actsOnceForAClickAKeyOrAnAssistiveTool) {
  QTest::mousePress(widget, Qt::LeftButton, {}, control.place);
  EXPECT_EQ(acted, control.actsOnPress ? 1 : 0);
  QTest::mouseRelease(widget, Qt::LeftButton, {}, control.place);
  EXPECT_EQ(acted, 1);
  click(Qt::RightButton);
  EXPECT_EQ(stage.window.presses, 1);
  QTest::keyClick(widget, Qt::Key_A);
  EXPECT_EQ(acted, 1);
  QTest::keyClick(widget, control.key);
  EXPECT_EQ(acted, 2);
  widget = put(stage, control.size);
  actByAssistiveTool();
  EXPECT_EQ(acted, 3);
}

TEST_P(LeafControl, doesNothingForAReleaseElsewhere) {
  const QImage before = stage.picture();
  QTest::mousePress(widget, Qt::LeftButton, {}, control.place);
  const QImage pressed = stage.picture();
  EXPECT_EQ(pressed != before, control.actsOnPress || control.showsHover);
  QTest::mouseRelease(widget, Qt::LeftButton, {}, QPoint(0, 3 * widget->height()));
  EXPECT_EQ(acted, control.actsOnPress ? 1 : 0);
  EXPECT_EQ(stage.picture(), control.actsOnPress ? pressed : before);
}

TEST_P(LeafControl, doesNothingWhileDisabled) {
  const QImage before = stage.picture();
  hover(*widget, control.place);
  EXPECT_EQ(stage.picture() != before, control.showsHover);
  hover(stage.window, {300, 150});
  EXPECT_EQ(stage.picture(), before);

  PaintCounter paints(*widget);
  widget->setEnabled(false);
  settle();
  EXPECT_GT(paints.count, 0);
  const QImage disabled = stage.picture();
  hover(*widget, control.place);
  click();
  QTest::keyClick(widget, control.key);
  actByAssistiveTool();
  EXPECT_EQ(acted, 0);
  EXPECT_EQ(stage.picture(), disabled);
}

TEST_P(LeafControl, showsOnlyFocusThatCameByKeyboard) {
  click();
  ASSERT_TRUE(widget->hasFocus());
  const QImage clicked = stage.picture();
  widget->clearFocus();
  EXPECT_EQ(stage.picture(), clicked);
  for (const auto reason : {Qt::TabFocusReason, Qt::BacktabFocusReason, Qt::ShortcutFocusReason}) {
    widget->setFocus(reason);
    EXPECT_NE(stage.picture(), clicked) << reason;
    widget->clearFocus();
    EXPECT_EQ(stage.picture(), clicked);
  }
  widget->setFocus(Qt::MouseFocusReason);
  QTest::keyClick(widget, control.key);
  const QImage used = stage.picture();
  widget->clearFocus();
  EXPECT_EQ(stage.picture() != used, control.content != nullptr) << "a leaf shows that the keyboard is used";
}

TEST_P(LeafControl, fillsAnotherSize) {
  LeafStage other;
  put(other, 2 * control.size);
  stage.picture();
  widget->resize(2 * control.size);
  EXPECT_EQ(stage.picture(), other.picture());
}

TEST_P(LeafControl, mayBeReplacedByItsOwnAction) {
  replaced = [this] {
    if (control.content == nullptr) return static_cast<Surface*>(widget)->setBehaviour({});
    static_cast<Leaf*>(widget)->show(control.content([] {}), {});
  };
  click();
  click();
  EXPECT_EQ(acted, 1);
}

TEST(LeafPicker, reportsOnlyTheUsersChoices) {
  LeafStage stage;
  std::vector<int> chosen;
  const auto choose = [&](int index) { chosen.push_back(index); };
  Leaf& leaf = stage.put(ranges(0, choose), {150, 24});
  leaf.show(ranges(2, choose), {});
  EXPECT_TRUE(chosen.empty());
  for (const int x : {3, 47, 55, 95, 105, 147}) QTest::mouseClick(&leaf, Qt::LeftButton, {}, {x, 12});
  EXPECT_EQ(chosen, (std::vector{0, 1, 2}));
  for (const auto key : {Qt::Key_Left, Qt::Key_Right, Qt::Key_Right, Qt::Key_Home, Qt::Key_Left, Qt::Key_End})
    QTest::keyClick(&leaf, key);
  EXPECT_EQ(chosen, (std::vector{0, 1, 2, 1, 2, 0, 2}));
}

TEST(LeafPicker, isAGroupOfRadioButtonsForAssistiveTools) {
  installLeafAccessibility();
  LeafStage stage;
  stage.showWindow();
  Leaf& leaf = stage.put(ranges(1, {}), {150, 24}, {.accessibilityLabel = verbatimText("Range")});
  QAccessibleInterface* group = QAccessible::queryAccessibleInterface(&leaf);
  EXPECT_EQ(group->text(QAccessible::Name), "Range");
  ASSERT_EQ(group->childCount(), 3);
  EXPECT_EQ(group->child(0)->role(), QAccessible::RadioButton);
  EXPECT_EQ(group->child(0)->text(QAccessible::Name), "60s");
  leaf.setFocus();
  for (const int selected : {1, 2}) {
    EXPECT_EQ(group->focusChild()->object(), group->child(selected)->object());
    for (int i = 0; i < 3; ++i) {
      EXPECT_EQ(group->child(i)->state().checked, i == selected) << i;
      EXPECT_EQ(group->child(i)->state().focused, i == selected) << i;
    }
    press(group->child(2));
  }
  leaf.resize(300, 24);
  EXPECT_EQ(group->child(2)->rect().right(), group->rect().right() - 2) << "follows the size";
  leaf.show(SegmentedPickerContent{{key("7 days")}, 0, {}}, {});
  QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_EQ(group->childCount(), 1);
}

TEST(LeafPicker, narrowsItsSegmentsDownToALimit) {
  LeafStage stage;
  Leaf& leaf = stage.put(ranges(0, {}), {150, 24});
  const double natural = leaf.measure({}).size.width;
  EXPECT_EQ(leaf.measure({unlimited, {}}).size.width, natural);
  EXPECT_EQ(leaf.measure({natural - 5, {}}).size.width, natural - 5);
  EXPECT_EQ(leaf.measure({0.0, {}}).size.width, 3 * (2 * 13 + 2 * 3) + 2 * 2);
  EXPECT_FALSE(leaf.show(ranges(1, {}), {}));
  EXPECT_TRUE(leaf.show(SegmentedPickerContent{{key("a longer label")}, 0, {}}, {}));
}

TEST(LeafSlider, movesInStepsWithinItsLimits) {
  installLeafAccessibility();
  LeafStage stage;
  stage.showWindow();
  std::vector<double> chosen;
  SliderContent content{50, 40, 63, 5, [&](double value) { chosen.push_back(value); }};
  Leaf& leaf = stage.put(content, {126, 22});
  hover(leaf, {118, 11});
  QTest::mousePress(stage.window.windowHandle(), Qt::LeftButton, {}, {8, 11});
  for (const int x : {21, 23, 62, 118, 500, -500}) hover(leaf, {x, 11});
  QTest::mouseRelease(stage.window.windowHandle(), Qt::LeftButton, {}, {8, 11});
  hover(leaf, {118, 11});
  EXPECT_EQ(chosen, (std::vector<double>{40, 45, 50, 60, 40}));

  content.value = 52;
  leaf.show(content, {});
  for (const auto key : {Qt::Key_Right, Qt::Key_End, Qt::Key_Right, Qt::Key_Left})
    QTest::keyClick(&leaf, key);
  QAccessibleValueInterface* value = QAccessible::queryAccessibleInterface(&leaf)->valueInterface();
  EXPECT_EQ(value->maximumValue().toDouble(), 60);
  value->setCurrentValue(46);
  EXPECT_EQ(chosen, (std::vector<double>{40, 45, 50, 60, 40, 55, 60, 55, 45}));
}

}  // namespace
}  // namespace kestrune::ui::qt
