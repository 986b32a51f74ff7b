#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ui/view/LayoutTree.h"

namespace kestrune::ui::test {
namespace {

using testing::ElementsAre;

constexpr std::optional<std::size_t> isNew;

auto matched(const std::vector<View>& before, const std::vector<View>& after) {
  std::vector<const View*> pointers;
  pointers.reserve(before.size());
  for (const View& view : before) pointers.push_back(&view);
  return matchChildren(pointers, after);
}
View keyed(std::string key) {
  return text("row").withKey(std::move(key));
}

TEST(Matching, followsKeysWhereverTheyMove) {
  EXPECT_THAT(matched(views(keyed("a"), keyed("b"), keyed("c")),
                      views(keyed("c"), keyed("a"), keyed("d"), keyed("b"))),
              ElementsAre(2, 0, isNew, 1));
}

TEST(Matching, followsThePlaceAmongViewsWithoutAKey) {
  const auto before = views(text("x"), keyed("a"), symbol("s"), text("y"));
  EXPECT_THAT(matched(before, views(keyed("a"), text("other"), symbol("t"))), ElementsAre(1, 0, 2));
  // An empty view holds the place of an absent one.
  EXPECT_THAT(matched(before, views(View{}, keyed("a"), symbol("t"), text("y"))),
              ElementsAre(isNew, 1, 2, 3));
}

TEST(Matching, continuesAViewOnceAtMost) {
  EXPECT_THAT(matched(views(keyed("a"), keyed("a")), views(keyed("a"), keyed("a"))), ElementsAre(0, isNew));
  EXPECT_THAT(matched(views(keyed("a")), views(keyed("a"), keyed("a"))), ElementsAre(0, isNew));
}

TEST(Matching, neverTurnsOneKindIntoAnother) {
  EXPECT_THAT(matched(views(text("x"), keyed("a")), views(symbol("s"), symbol("t").withKey("a"))),
              ElementsAre(isNew, isNew));
  EXPECT_THAT(matched(views(keyed("a")), views(text("no key"))), ElementsAre(isNew));
  // A modifier that wraps the view takes its key along.
  EXPECT_THAT(matched(views(keyed("a").padding(1)), views(keyed("b").padding(1), keyed("a").padding(2))),
              ElementsAre(isNew, 0));
}

class One : public Component {
 public:
  View body() override { return {}; }
};
class Other final : public One {};

TEST(Matching, tellsComponentsByTheirType) {
  const auto one = [] { return component<One>([] { return std::make_shared<One>(); }); };
  const auto other = [] { return component<Other>([] { return std::make_shared<Other>(); }); };
  EXPECT_THAT(matched(views(one(), other()), views(one(), one())), ElementsAre(0, isNew));
}

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

}  // namespace
}  // namespace kestrune::ui::test
