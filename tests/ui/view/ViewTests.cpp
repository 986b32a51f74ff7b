#include <gtest/gtest.h>

#include "ui/view/View.h"

namespace kestrune::ui {
namespace {

// Rows are often made from a common view.
TEST(Modifiers, LeaveCopiesAlone) {
  const View plain = text("title").help(key("help"));
  const View tapped = View(plain).onTap([] {}).selected(true).withOpacity(0.5).withOpacity(0.5);
  EXPECT_FALSE(plain.traits->onTap);
  EXPECT_FALSE(plain.traits->isSelected);
  EXPECT_TRUE(tapped.traits->onTap);
  EXPECT_TRUE(tapped.traits->isSelected);
  EXPECT_EQ(tapped.traits->help, key("help"));
  EXPECT_EQ(tapped.opacity, 0.25);
}

}  // namespace
}  // namespace kestrune::ui
