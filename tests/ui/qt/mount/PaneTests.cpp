#include <gtest/gtest.h>

#include "ui/qt/MountSupport.h"
#include "ui/qt/mount/Panes.h"

namespace kestrune::ui::qt {
namespace {

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
