#include <QAccessible>
#include <QKeyEvent>
#include <QMouseEvent>
#include <gtest/gtest.h>

#include "ui/qt/LeafSupport.h"
#include "ui/qt/leaves/LeafAccessibility.h"

namespace kestrune::ui::qt {
namespace {

class LeafPicker : public testing::Test {
 protected:
  SegmentedPickerContent ranges(int selected) {
    return {{key("60s"), key("5m"), key("1h")}, selected, [this](int index) { chosen.push_back(index); }};
  }
  static void pressKey(QWidget& widget, int key) {
    QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
    QApplication::sendEvent(&widget, &event);
  }
  static void click(QWidget& widget, QPointF place) {
    for (const auto type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
      QMouseEvent event(type, place, widget.mapToGlobal(place), Qt::LeftButton, Qt::LeftButton,
                        Qt::NoModifier);
      QApplication::sendEvent(&widget, &event);
    }
  }

  LeafStage stage;
  std::vector<int> chosen;
};

TEST_F(LeafPicker, ReportsTheUsersChoicesAndNoOthers) {
  Leaf& leaf = stage.put(ranges(0), 150, 24);
  leaf.show(ranges(2), {});
  EXPECT_TRUE(chosen.empty());

  click(leaf, {75, 12});
  EXPECT_EQ(chosen, std::vector<int>{1});
  click(leaf, {75, 12});
  EXPECT_EQ(chosen.size(), 1U) << "chosen already";
  for (const int key : {Qt::Key_Right, Qt::Key_Right, Qt::Key_Left, Qt::Key_Home, Qt::Key_End})
    pressKey(leaf, key);
  EXPECT_EQ(chosen, (std::vector<int>{1, 2, 1, 0, 2}));

  SegmentedPickerContent other = ranges(2);
  int later = -1;
  other.onSelect = [&](int index) { later = index; };
  leaf.show(other, {});
  pressKey(leaf, Qt::Key_Left);
  EXPECT_EQ(later, 1);
  EXPECT_EQ(chosen.size(), 5U);
}

TEST_F(LeafPicker, SurvivesACallThatReplacesIt) {
  Leaf& leaf = stage.put(ranges(0), 150, 24);
  SegmentedPickerContent content = ranges(0);
  content.onSelect = [&](int index) {
    chosen.push_back(index);
    leaf.show(SegmentedPickerContent{{key("7 days")}, 0, {}}, {});
  };
  leaf.show(content, {});
  click(leaf, {140, 12});
  EXPECT_EQ(chosen, std::vector<int>{2});
  click(leaf, {140, 12});
  EXPECT_EQ(chosen.size(), 1U);
}

TEST_F(LeafPicker, HasOneStopForTheKeyboardAndShowsItsFocus) {
  Leaf& leaf = stage.put(ranges(0), 150, 24);
  EXPECT_EQ(leaf.focusPolicy(), Qt::StrongFocus);
  for (const QWidget* child : leaf.findChildren<QWidget*>()) EXPECT_EQ(child->focusPolicy(), Qt::NoFocus);
  const QImage before = stage.picture();
  QFocusEvent byMouse(QEvent::FocusIn, Qt::MouseFocusReason);
  QApplication::sendEvent(&leaf, &byMouse);
  EXPECT_EQ(stage.picture(), before);
  QFocusEvent byTab(QEvent::FocusIn, Qt::TabFocusReason);
  QApplication::sendEvent(&leaf, &byTab);
  EXPECT_NE(stage.picture(), before);
}

TEST_F(LeafPicker, IsAGroupOfRadioButtonsForAssistiveTools) {
  installLeafAccessibility();
  Leaf& leaf = stage.put(ranges(1), 150, 24,
                         styled([](LeafStyle& style) { style.accessibilityLabel = verbatimText("Range"); }));
  stage.showWindow();
  QAccessibleInterface* group = QAccessible::queryAccessibleInterface(&leaf);
  EXPECT_EQ(group->text(QAccessible::Name), "Range");
  ASSERT_EQ(group->childCount(), 3);
  EXPECT_EQ(group->child(0)->role(), QAccessible::RadioButton);
  EXPECT_EQ(group->child(0)->text(QAccessible::Name), "60s");
  EXPECT_FALSE(group->child(0)->state().checked);
  EXPECT_TRUE(group->child(1)->state().checked);
  EXPECT_LT(group->child(1)->rect().left(), group->child(2)->rect().left());

  QAccessibleActionInterface* actions = group->child(2)->actionInterface();
  ASSERT_TRUE(actions->actionNames().contains(QAccessibleActionInterface::pressAction()));
  actions->doAction(QAccessibleActionInterface::pressAction());
  EXPECT_EQ(chosen, std::vector<int>{2});
  EXPECT_TRUE(group->child(2)->state().checked);
}

}  // namespace
}  // namespace kestrune::ui::qt
