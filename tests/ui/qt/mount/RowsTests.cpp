#include <QScrollArea>
#include <QScrollBar>
#include <gtest/gtest.h>

#include "ui/qt/MountSupport.h"
#include "ui/qt/mount/RowsPane.h"

namespace kestrune::ui::qt {
namespace {

// A list of numbers in a scroll view, below a line of text.
struct Numbers {
  Published<std::size_t> count{100000};
  Published<int> offset{0};
  std::size_t made = 0;
  std::vector<std::size_t> tapped;
  int wentBack = 0;

  View view() {
    return scene([this] {
      const int shift = offset.get();
      RowsContent content{
          .count = count.get(),
          .rowHeight = 20,
          .row =
              [this, shift](std::size_t index) {
                ++made;
                const std::string name = std::to_string(static_cast<int>(index) + shift);
                return hstack(0, VerticalAlignment::center, views(verbatim(name))).onTap([this, index] {
                  tapped.push_back(index);
                });
              },
          .onBack = [this] { ++wentBack; }};
      return scroll(
          vstack(0, HorizontalAlignment::leading, views(verbatim("above"), rows(std::move(content)))));
    });
  }
};

struct ListStage {
  Numbers numbers;
  Stage stage{numbers.view(), {300, 200}};
  RowsPane& pane = *stage.shown<RowsPane>().first();
  QScrollBar& bar = *stage.shown<QScrollArea>().first()->verticalScrollBar();

  bool shows(const QString& text) { return stage.surface(text) != nullptr; }
  void press(Qt::Key key) { QTest::keyClick(&pane, key); }
};

TEST(Rows, OnlyWhatIsSeenIsMade) {
  ListStage list;
  EXPECT_EQ(list.pane.height(), 2000000);
  EXPECT_TRUE(list.shows("0"));
  EXPECT_LT(list.numbers.made, 20U);

  list.bar.setValue(1000000);
  QApplication::processEvents();
  EXPECT_TRUE(list.shows("50000"));
  EXPECT_FALSE(list.shows("0"));
  EXPECT_LT(list.pane.existingRows(), 20U);

  const std::size_t before = list.numbers.made;
  list.numbers.offset.set(7);
  list.stage.nextFrame();
  EXPECT_TRUE(list.shows("50007"));
  EXPECT_EQ(list.numbers.made - before, list.pane.existingRows()) << "each once";
  EXPECT_EQ(list.bar.value(), 1000000);

  list.numbers.count.set(3);
  list.stage.nextFrame();
  QApplication::processEvents();
  EXPECT_EQ(list.pane.existingRows(), 3U);
  EXPECT_TRUE(list.shows("9"));
}

TEST(Rows, TheKeyboardGoesFromRowToRow) {
  ListStage list;
  list.pane.setFocus(Qt::TabFocusReason);
  list.press(Qt::Key_Down);
  list.press(Qt::Key_Down);
  list.press(Qt::Key_Return);
  EXPECT_EQ(list.numbers.tapped, std::vector<std::size_t>{2});
  EXPECT_TRUE(list.stage.surface("2")->isMarked());
  list.press(Qt::Key_End);
  list.press(Qt::Key_Space);
  EXPECT_EQ(list.numbers.tapped.back(), 99999U);
  EXPECT_TRUE(list.shows("99999"));
  list.press(Qt::Key_Backspace);
  EXPECT_EQ(list.numbers.wentBack, 1);
  EXPECT_EQ(list.stage.surface("99999")->focusPolicy(), Qt::NoFocus);
}

}  // namespace
}  // namespace kestrune::ui::qt
