#include <QScrollArea>
#include <QScrollBar>
#include <gtest/gtest.h>

#include "ui/qt/MountSupport.h"
#include "ui/qt/mount/Panes.h"
#include "ui/qt/mount/RowsPane.h"

namespace kestrune::ui::qt {
namespace {

// A window with a list of numbers in a scroll view, below a line of text.
struct ListStage {
  Published<std::size_t> count{100000};
  Published<int> offset{0};
  std::size_t made = 0;
  std::vector<std::size_t> tapped;
  int wentBack = 0;
  Stage stage{scene([this] { return list(); }), {300, 200}};
  RowsPane& pane = *stage.shown<RowsPane>().first();
  QScrollBar& bar = *stage.shown<QScrollArea>().first()->verticalScrollBar();

  View list() {
    const auto row = [this, shift = offset.get()](std::size_t index) {
      ++made;
      const std::string name = std::to_string(static_cast<int>(index) + shift);
      return hstack(0, {}, views(verbatim(name))).onTap([this, index] { tapped.push_back(index); });
    };
    const auto goBack = [this] { ++wentBack; };
    return scroll(page(verbatim("above"), rows({count.get(), 20, row, goBack})));
  }
  bool shows(const QString& text) { return stage.surface(text) != nullptr; }
  void press(Qt::Key key) { QTest::keyClick(&pane, key); }
};

TEST(Rows, existOnlyWhileTheyCanBeSeen) {
  ListStage list;
  EXPECT_EQ(list.pane.height(), 2000000);
  EXPECT_TRUE(list.shows("0"));
  EXPECT_LT(list.made, 20U);

  list.bar.setValue(1000000);
  settle();
  EXPECT_TRUE(list.shows("50000"));
  EXPECT_FALSE(list.shows("0"));
  EXPECT_LT(list.pane.existingRows(), 20U);

  const std::size_t before = list.made;
  list.offset.set(7);
  list.stage.nextFrame();
  EXPECT_TRUE(list.shows("50007"));
  EXPECT_EQ(list.made - before, list.pane.existingRows()) << "each once";
  EXPECT_EQ(list.bar.value(), 1000000);

  list.count.set(3);
  list.stage.nextFrame();
  settle();
  EXPECT_EQ(list.pane.existingRows(), 3U);
  EXPECT_TRUE(list.shows("9"));
}

TEST(Rows, followTheKeyboard) {
  ListStage list;
  list.pane.setFocus(Qt::TabFocusReason);
  const std::pair<Qt::Key, std::size_t> presses[] = {
      {Qt::Key_Down, 1},     {Qt::Key_Down, 2},       {Qt::Key_Up, 1},  {Qt::Key_PageDown, 10},
      {Qt::Key_PageUp, 1},   {Qt::Key_PageUp, 0},     {Qt::Key_Up, 0},  {Qt::Key_End, 99999},
      {Qt::Key_Down, 99999}, {Qt::Key_PageUp, 99990}, {Qt::Key_Home, 0}};
  for (const auto& [key, expected] : presses) {
    list.press(key);
    settle();
    list.press(Qt::Key_Return);
    ASSERT_FALSE(list.tapped.empty());
    EXPECT_EQ(list.tapped.back(), expected) << "after key " << key;
    Surface* current = list.stage.surface(QString::number(expected));
    ASSERT_NE(current, nullptr) << "scrolled into view";
    EXPECT_TRUE(current->isMarked());
    EXPECT_EQ(current->focusPolicy(), Qt::NoFocus);
  }
  list.press(Qt::Key_Backspace);
  EXPECT_EQ(list.wentBack, 1);
}

TEST(Rows, showFocusThatCameByKeyboardOnly) {
  ListStage list;
  const auto isMarked = [&] { return list.stage.surface("0")->isMarked(); };
  list.pane.setFocus(Qt::MouseFocusReason);
  EXPECT_FALSE(isMarked());
  list.pane.clearFocus();
  list.pane.setFocus(Qt::TabFocusReason);
  EXPECT_TRUE(isMarked());
  list.pane.clearFocus();
  EXPECT_FALSE(isMarked());
}

TEST(Rows, areAsWideAsTheList) {
  ListStage list;
  for (const int width : {300, 500, 250}) {
    list.stage.resize(width, 200);
    const auto* row = list.stage.surface("1")->parentWidget();
    EXPECT_EQ(row->geometry(), QRect(0, 20, width, 20));
    EXPECT_EQ(list.pane.width(), width);
  }
}

TEST(SplitPane, givesFurtherRoomToTheDetail) {
  Stage stage(split(100, 150, verbatim("sidebar"), verbatim("detail")), {600, 400});
  auto& pane = *stage.shown<SplitPane>().first();
  EXPECT_EQ(pane.sizes(), (QList<int>{150, 449}));
  stage.resize(800, 400);
  EXPECT_EQ(pane.sizes(), (QList<int>{150, 649}));
  pane.setSizes({10, 789});
  EXPECT_EQ(pane.sizes(), (QList<int>{100, 699}));
}

TEST(ScrollPane, scrollsContentOfItsOwnWidthByASlimBar) {
  Published<double> height{1000};
  Stage stage(scene([&] { return scroll(divider().height(height.get())); }), {300, 200});
  auto& pane = *stage.shown<ScrollPane>().first();
  EXPECT_EQ(pane.content()->size(), QSize(300, 1000));
  auto& bar = *stage.shown<ThinScrollBar>().first();
  EXPECT_EQ(bar.geometry(), QRect(288, 0, 12, 200));
  EXPECT_EQ(bar.maximum(), 800);
  bar.setValue(300);
  EXPECT_EQ(pane.content()->y(), -300);
  pane.verticalScrollBar()->setValue(200);
  EXPECT_EQ(bar.value(), 200);
  stage.resize(400, 250);
  EXPECT_EQ(bar.geometry(), QRect(388, 0, 12, 250));

  height.set(900);
  stage.nextFrame();
  EXPECT_EQ(bar.maximum(), 650);
  EXPECT_EQ(pane.content()->y(), -200) << "the position survives";
  height.set(50);
  stage.nextFrame();
  EXPECT_FALSE(bar.isVisible()) << "nothing to scroll";
}

}  // namespace
}  // namespace kestrune::ui::qt
