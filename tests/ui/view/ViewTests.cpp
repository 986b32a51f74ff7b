#include <gtest/gtest.h>

#include "ui/view/View.h"

namespace kestrune::ui {
namespace {

// Rows are often made from a common view.
TEST(Modifiers, leaveCopiesAlone) {
  const View plain = text("title").help(key("help"));
  const View tapped = View(plain).onTap([] {}).selected(true).withOpacity(0.5).withOpacity(0.5);
  EXPECT_FALSE(plain.traits->onTap);
  EXPECT_FALSE(plain.traits->isSelected);
  EXPECT_TRUE(tapped.traits->onTap);
  EXPECT_TRUE(tapped.traits->isSelected);
  EXPECT_EQ(tapped.traits->help, key("help"));
  EXPECT_EQ(tapped.opacity, 0.25);
}

TEST(Modifiers, setTheirTrait) {
  const View view = text("title").accessibilityElement(key("spoken")).disabled(true).contextMenu({{}, {}});
  EXPECT_TRUE(traitsOf(view).isAccessibilityElement);
  EXPECT_EQ(traitsOf(view).accessibilityLabel, key("spoken"));
  EXPECT_TRUE(traitsOf(view).isDisabled);
  EXPECT_EQ(traitsOf(view).contextMenu.size(), 2U);
  EXPECT_FALSE(traitsOf(text("plain")).isDisabled);
  EXPECT_EQ(traitsOf(toggle(key("label"), true, {})).accessibilityLabel, key("label"));
  EXPECT_EQ(traitsOf(slider(key("label"), {})).accessibilityLabel, key("label"));
}

}  // namespace
}  // namespace kestrune::ui
