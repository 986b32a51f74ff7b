#include <QGuiApplication>
#include <QScreen>
#include <gtest/gtest.h>

#include "ui/ViewFixture.h"
#include "ui/qt/LeafSupport.h"
#include "ui/qt/Popover.h"

namespace kestrune::ui::qt {
namespace {

using PopoverTest = test::ViewFixture;

TEST_F(PopoverTest, opensBesideItsAnchorAndGrowsAwayFromIt) {
  Theme theme{texts};
  const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
  const auto show = [&](std::initializer_list<const char*> metrics, bool isShown) {
    for (const std::string metric : metrics)
      preferences.set("metrics." + metric + ".menubar.enabled", isShown);
    computer.advance(std::chrono::seconds(1));
    settle();
  };
  for (const bool isAtTop : {true, false}) {
    show({"cpu", "memory", "processes", "disk", "network"}, false);
    Popover popover(context(), theme, {});
    const QRect anchor(screen.center().x() - 10, isAtTop ? screen.top() : screen.bottom() - 19, 20, 20);
    popover.toggle(anchor);
    settle();
    const QRect before = popover.geometry();
    EXPECT_EQ(isAtTop ? before.top() - anchor.bottom() : anchor.top() - before.bottom(), 5);
    EXPECT_NEAR(before.center().x(), anchor.center().x(), 1);
    show({"cpu", "disk", "network"}, true);
    const QRect after = popover.geometry();
    EXPECT_GT(after.height(), before.height());
    EXPECT_EQ(after.width(), before.width());
    EXPECT_EQ(isAtTop ? after.top() : after.bottom(), isAtTop ? before.top() : before.bottom());
    popover.toggle(anchor);
    EXPECT_FALSE(popover.isVisible());
    popover.toggle(anchor);
    EXPECT_FALSE(popover.isVisible()) << "the click that closes doesn't reopen";
  }
}

}  // namespace
}  // namespace kestrune::ui::qt
