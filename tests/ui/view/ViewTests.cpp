#include <gtest/gtest.h>

#include "ui/view/View.h"

namespace kestrune::ui {
namespace {

TEST(Modifiers, KeepTheKeyOnTheOutermostView) {
  const View view = text("title").withKey("row").padding(4).background({}).withOpacity(0.5);
  EXPECT_EQ(view.key, "row");
  ASSERT_NE(view.as<BackgroundContent>(), nullptr);
  const View& padding = view.children.at(0);
  EXPECT_EQ(padding.key, "");
  ASSERT_NE(padding.as<PaddingContent>(), nullptr);
  EXPECT_EQ(padding.children.at(0).as<TextContent>()->string, "title");
  EXPECT_EQ(view.opacity, 0.5);
  EXPECT_EQ(padding.opacity, 1);
}

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

TEST(Component, IsHandedWhatItsSurroundingsGiveIt) {
  struct Counter final : Component {
    int value = 0;
    View body() override { return verbatim(std::to_string(value)); }
  };
  const View view =
      component<Counter>([] { return std::make_shared<Counter>(); }, [](Counter& made) { made.value = 7; });
  const auto& content = *view.as<ComponentContent>();
  const auto made = content.make();
  content.update(*made);
  EXPECT_EQ(made->body().as<TextContent>()->string, "7");
  EXPECT_FALSE(made->body().as<TextContent>()->isKey);
}

}  // namespace
}  // namespace kestrune::ui
