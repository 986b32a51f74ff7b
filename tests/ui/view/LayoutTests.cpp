#include <limits>

#include <gmock/gmock.h>

#include "ui/view/LayoutTree.h"
#include "ui/view/RandomViews.h"

namespace kestrune::ui::test {
namespace {

using testing::ElementsAre;

View row(double spacing, std::vector<View> children) {
  return hstack(spacing, VerticalAlignment::center, std::move(children));
}
View column(double spacing, std::vector<View> children) {
  return vstack(spacing, HorizontalAlignment::leading, std::move(children));
}
Extent between(std::optional<double> min, std::optional<double> max) {
  return {.fixed = {}, .min = min, .max = max};
}

Extent exactly(double length) {
  return {.fixed = length, .min = {}, .max = {}};
}

class Nothing final : public Component {
 public:
  View body() override { return {}; }
};
class Word final : public Component {
 public:
  View body() override { return text("word"); }
};
template <class C>
View componentOf() {
  return component<C>([] { return std::make_shared<C>(); });
}

using Frames = std::vector<Rect>;

// Of the children, in a root of that size.
Frames frames(double width, double height, const View& view) {
  return LayoutTree(view).placed(width, height).childFrames();
}

TEST(Stack, givesFlexibleChildrenWhatRigidOnesLeave) {
  EXPECT_EQ(frames(200, 40, row(10, views(chart(), text("abcd"), chart(), symbol("s")))),
            (Frames{{0, 0, 55, 40}, {65, 12, 40, 16}, {115, 0, 55, 40}, {180, 10, 20, 20}}));
  EXPECT_EQ(frames(100, 10, row(0, views(chart(), chart().width(80)))),
            (Frames{{0, 0, 20, 10}, {20, 0, 80, 10}}));
  EXPECT_EQ(frames(30, 20, row(0, views(symbol("a"), symbol("b"), chart()))),
            (Frames{{0, 0, 20, 20}, {20, 0, 20, 20}, {40, 0, 0, 20}}))
      << "overflows";
  const View larger = chart().frame(between(200, unlimited), {});
  EXPECT_EQ(frames(300, 10, row(0, views(chart(), larger))), (Frames{{0, 0, 100, 10}, {100, 0, 200, 10}}))
      << "the larger is served first";
}

TEST(Stack, givesSpacersOnlyWhatNothingElseWants) {
  const View words = row(0, views(text("abcdefghijkl"), spacer(), text("abc")));
  EXPECT_EQ(frames(170, 16, words), (Frames{{0, 0, 120, 16}, {120, 8, 20, 0}, {140, 0, 30, 16}}));
  // In too narrow a row the spacer keeps its minimum and the text wraps.
  EXPECT_EQ(frames(110, 32, words), (Frames{{0, 0, 70, 32}, {70, 16, 10, 0}, {80, 8, 30, 16}}));
  EXPECT_EQ(frames(100, 20, row(5, views(spacer(0), symbol("s"), spacer(30)))),
            (Frames{{0, 10, 35, 0}, {40, 0, 20, 20}, {65, 10, 35, 0}}));
}

TEST(Grid, hasEvenColumnsAndRowsAsTallAsTheirTallestCell) {
  EXPECT_EQ(frames(170, 62,
                   columns(3, 10, views(symbol("a"), text("abcdefgh"), chart(), chart(), symbol("b")),
                           {1, 1, 1, 2})),
            (Frames{{0, 0, 20, 20}, {60, 0, 50, 32}, {120, 0, 50, 32}, {0, 42, 110, 20}, {120, 42, 20, 20}}));
}

TEST(Stack, canMakeItsChildrenEvenlyTall) {
  LayoutTree tree(row(0, views(column(0, views(text("a"), text("b"))), text("c").fillHeight())).evenlyTall());
  const Proposal anyHeight{20, {}};
  EXPECT_EQ(tree.node().measure(anyHeight), (Size{20, 32}));
  tree.node().place({0, 0, 20, 32}, anyHeight);
  EXPECT_EQ(tree.at(1).node().frame(), (Rect{10, 0, 10, 32}));
  EXPECT_EQ(tree.at(1).at(0).node().frame(), (Rect{10, 0, 10, 16}));
}

TEST(Stack, leavesNoSpaceForEmptyViews) {
  const auto hidden = [](View view) {
    return column(10, views(text("a"), std::move(view), View{}, text("b")));
  };
  EXPECT_EQ(LayoutTree(hidden({})).node().measure({}), (Size{10, 42}));
  LayoutTree tree(hidden(componentOf<Nothing>()));
  EXPECT_EQ(tree.node().measure({}), (Size{10, 42}));
  EXPECT_EQ(tree.placed(10, 42).at(1).frame(), (Rect{0, 0, 0, 0}));
  EXPECT_EQ(LayoutTree(hidden(componentOf<Word>())).node().measure({}), (Size{40, 68}));
  EXPECT_EQ(LayoutTree(column(10, {})).node().measure({100, 100}), Size{});
}

TEST(Stack, alignsFirstBaselines) {
  const auto large = column(0, views(text("a"), text("b"))).padding(Insets{10, 0, 0, 0});
  LayoutTree tree(hstack(0, VerticalAlignment::firstTextBaseline, views(text("a"), large, symbol("s"))));
  EXPECT_THAT(tree.placed(100, 42).at(0).frame(), (Rect{30, 10, 10, 16}));
  EXPECT_THAT(tree.at(1).frame(), (Rect{40, 0, 10, 42}));
  EXPECT_THAT(tree.at(2).frame(), (Rect{50, 2, 20, 20}));  // without text: stands on the line
  EXPECT_EQ(tree.node().measure({}), (Size{40, 42}));
}

TEST(Divider, isAHairlineAcrossTheInnermostStack) {
  LayoutTree tree(row(5, views(symbol("a"), divider().padding(1), column(0, views(divider(), symbol("b"))))));
  tree.placed(200, 40);
  EXPECT_EQ(tree.at(1).at(0).frame(), (Rect{26, 1, 1, 38}));
  EXPECT_EQ(tree.at(2).at(0).frame(), (Rect{33, 10, 167, 1}));
}

TEST(Frame, takesTheOfferWithinItsLimits) {
  struct Case {
    Extent width;
    std::optional<double> offered;
    double expected;
  };
  // Around a text of 6 letters, between 10 and 60 wide.
  const Case cases[] = {
      {{}, 200, 60},
      {{.fixed = 45, .min = 100, .max = 20}, std::nullopt, 45},
      {between({}, unlimited), 200, 200},
      {between({}, unlimited), 5, 10},
      {between({}, unlimited), std::nullopt, 60},
      {between({}, 40), 200, 40},
      {between(100, {}), 200, 100},
      {between(100, {}), 20, 100},
      {between(30, {}), 45, 40},
      {between(30, 80), 0, 30},
      {between(30, 80), 50, 50},
      {between(30, 80), unlimited, 80},
      {between(80, 30), 50, 80},
  };
  for (const Case& each : cases) {
    LayoutTree tree(text("abcdef").frame(each.width, {}));
    EXPECT_EQ(tree.node().measure({each.offered, std::nullopt}).width, each.expected)
        << "case " << &each - &cases[0];
  }
}

TEST(Sizes, areTheIdealOnesWithoutAnOfferAndElseFitIt) {
  struct Case {
    const char* name;
    View view;
    Size ideal;
    Size offered;  // 100 by 50
  };
  const auto s = [] { return symbol("s"); };
  const Case cases[] = {
      {"symbol", s(), {20, 20}, {20, 20}},
      {"icon", icon("a", "s"), {24, 24}, {100, 50}},
      {"chart", chart(), {10, 10}, {100, 50}},
      {"spacer", spacer(7), {0, 7}, {0, 50}},
      {"divider", divider(), {10, 1}, {100, 1}},
      {"scroll", scroll(text("a")), {0, 0}, {100, 50}},
      {"alert", View(AlertContent{}), {0, 0}, {0, 0}},
      {"button", button(s(), [] {}), {20, 20}, {20, 20}},
      {"component", componentOf<Word>(), {40, 16}, {40, 16}},
      {"label", label("abc", "s"), {56, 20}, {56, 20}},
      {"padding", chart().padding(Insets{1, 2, 3, 4}), {16, 14}, {100, 50}},
      {"horizontal padding", s().paddingHorizontal(3), {26, 20}, {26, 20}},
      {"vertical padding", s().paddingVertical(3), {20, 26}, {20, 26}},
      {"width", s().width(5), {5, 20}, {5, 20}},
      {"height", s().height(5), {20, 5}, {20, 5}},
      {"size", s().size(3, 4), {3, 4}, {3, 4}},
      {"minimum width", s().minWidth(30), {30, 20}, {30, 20}},
      {"filled width", s().fillWidth(), {20, 20}, {100, 20}},
      {"filled height", s().fillHeight(), {20, 20}, {20, 50}},
      {"stack in depth", zstack({}, views(s(), text("abc"))), {30, 20}, {30, 20}},
      {"columns", columns(2, 10, views(s(), text("abc"))), {70, 20}, {100, 20}},
      {"grid", adaptiveGrid(40, 10, views(s(), s())), {40, 50}, {100, 20}},
      {"first fit", firstFit(views(text("abcd"), s())), {40, 16}, {40, 16}},
  };
  for (const Case& each : cases) {
    LayoutTree tree(each.view);
    EXPECT_EQ(tree.node().measure({}), each.ideal) << each.name;
    EXPECT_EQ(tree.node().measure({100, 50}), each.offered) << each.name;
  }
}

TEST(Alignment, placesTheFirstChild) {
  const auto in = [](HorizontalAlignment alignment) {
    return vstack(0, alignment, views(symbol("s"), chart()));
  };
  const auto beside = [](VerticalAlignment alignment) {
    return hstack(0, alignment, views(symbol("s"), chart()));
  };
  const Alignment bottomTrailing{HorizontalAlignment::trailing, VerticalAlignment::bottom};
  const std::pair<View, Rect> cases[] = {
      {in(HorizontalAlignment::leading), {0, 0, 20, 20}},
      {in(HorizontalAlignment::center), {40, 0, 20, 20}},
      {in(HorizontalAlignment::trailing), {80, 0, 20, 20}},
      {beside(VerticalAlignment::top), {0, 0, 20, 20}},
      {beside(VerticalAlignment::center), {0, 15, 20, 20}},
      {beside(VerticalAlignment::bottom), {0, 30, 20, 20}},
      {zstack(topLeading, views(symbol("s"), chart())), {0, 0, 20, 20}},
      {zstack(bottomTrailing, views(symbol("s"), chart())), {80, 30, 20, 20}},
      {chart().padding(Insets{1, 2, 3, 4}), {2, 1, 94, 46}},
      {symbol("s").fillWidth(), {0, 15, 20, 20}},
      {symbol("s").fillWidth(HorizontalAlignment::trailing), {80, 15, 20, 20}},
      {symbol("s").fillHeight(), {40, 0, 20, 20}},
      {symbol("s").fillHeight(VerticalAlignment::bottom), {40, 30, 20, 20}},
      {symbol("s").width(40), {40, 15, 20, 20}},
      {symbol("s").minWidth(40, HorizontalAlignment::trailing), {50, 15, 20, 20}},
      {symbol("s").frame(exactly(100), exactly(50), topLeading), {0, 0, 20, 20}},
      {symbol("s").frame(exactly(100), exactly(50), bottomTrailing), {80, 30, 20, 20}},
      {chart().frame(exactly(100), between(10, 40)), {0, 5, 100, 40}},
      {chart().frame(between(120, {}), {}), {0, 0, 120, 50}},
      {symbol("s").width(10), {40, 15, 20, 20}},  // too large: reaches past both sides
  };
  for (const auto& [view, frame] : cases) {
    EXPECT_EQ(LayoutTree(view).placed(100, 50).at(0).frame(), frame) << testing::PrintToString(frame);
  }
}

TEST(Grid, fillsAsManyColumnsAsFit) {
  LayoutTree tree(adaptiveGrid(40, 10, views(text("abcdefgh"), symbol("a"), symbol("b"), chart())));
  // Two columns of 45: the first text needs two lines.
  EXPECT_EQ(tree.placed(100, 62).childFrames(),
            (Frames{{0, 0, 40, 32}, {55, 0, 20, 20}, {0, 42, 20, 20}, {55, 42, 45, 10}}));
  EXPECT_EQ(tree.node().measure({139, std::nullopt}), (Size{139, 62}));
  EXPECT_EQ(tree.node().measure({140, std::nullopt}), (Size{140, 32 + 10 + 10}));  // three columns
  EXPECT_EQ(LayoutTree(adaptiveGrid(0, 0, {})).node().measure({100, 100}), (Size{100, 0}));
}

TEST(FirstFit, showsTheFirstArrangementThatIsNotTooWide) {
  LayoutTree tree(firstFit(views(text("abcdefgh"), text("abcd"), symbol("s"))));
  const auto shown = [&](double width) {
    tree.placed(width, 100);
    std::vector<int> places;
    for (std::size_t i = 0; i < 3; ++i) {
      if (!tree.at(i).node().isLeftOut()) places.push_back(static_cast<int>(i));
    }
    return places;
  };
  EXPECT_THAT(shown(80), ElementsAre(0));
  EXPECT_THAT(shown(79), ElementsAre(1));
  EXPECT_THAT(shown(10), ElementsAre(2)) << "the last if nothing fits";
}

TEST(Placing, roundsEdgesSoThatNeighboursMeet) {
  EXPECT_EQ(frames(100, 9.6, row(0, views(chart(), chart(), chart()))),
            (Frames{{0, 0, 33, 10}, {33, 0, 34, 10}, {67, 0, 33, 10}}));
  // A width in whole pixels survives at any position.
  for (int eighths = -16; eighths < 16; ++eighths) {
    const double offset = eighths / 8.0;
    LayoutTree moved(text("abc"));
    moved.node().place({offset, offset, 30, 16});
    EXPECT_EQ(moved.frame().width, 30) << offset;
  }
}

TEST(Placing, centresTheRootOrKeepsItsStartInView) {
  LayoutTree tree(column(0, views(text("abcd"), text("ab"))));
  tree.node().place({10, 20, 100, 100});
  EXPECT_EQ(tree.frame(), (Rect{40, 54, 40, 32}));
  EXPECT_EQ(tree.at(1).frame(), (Rect{40, 70, 20, 16}));
  tree.placed(30, 8);
  EXPECT_EQ(tree.at(0).frame(), (Rect{0, 0, 30, 32}));
  EXPECT_EQ(tree.at(1).frame(), (Rect{0, 32, 20, 16}));
}

// A scrolled page is as high as it wants to be at its width; its parts keep the sizes that were measured.
TEST(Placing, keepsToTheProposalThatTheSizeWasMeasuredWith) {
  const auto filling = [](const char* string) {
    return text(string).frame({}, between({}, unlimited), topLeading);
  };
  LayoutTree tree(column(0, views(filling("abcdef"), filling("a"))));
  const Proposal page{20, std::nullopt};
  const Size size = tree.node().measure(page);
  EXPECT_EQ(size, (Size{20, 64}));
  tree.node().place({0, 0, 20, size.height}, page);
  EXPECT_THAT(tree.childFrames(), ElementsAre(Rect{0, 0, 20, 48}, Rect{0, 48, 10, 16}));
}

TEST(Node, leavesTheTreeWhenDestroyed) {
  LayoutNode root;
  root.setContent(VStackContent{});
  auto first = std::make_unique<LayoutNode>();
  auto second = std::make_unique<LayoutNode>();
  first->setContent(AdaptiveGridContent{});
  second->setContent(DividerContent{});
  root.setChildren({first.get(), second.get()});
  root.place({0, 0, 10, 10});
  EXPECT_FALSE(root.needsLayout());
  first.reset();
  EXPECT_TRUE(root.needsLayout());
  EXPECT_EQ(root.measure({10, 10}), (Size{10, 1}));
}

View nest(int levels) {
  if (levels == 0) return text("leaf");
  auto inner = nest(levels - 1).padding(1);
  auto stack = levels % 2 == 0 ? row(4, views(text("a"), std::move(inner), spacer(), chart()))
                               : column(4, views(text("b"), divider(), std::move(inner).fillWidth()));
  return std::move(stack).background({});
}

TEST(Memory, keepsDeepTreesFromBeingMeasuredRepeatedly) {
  int measurements = 0;
  LayoutTree(nest(12), &measurements).placed(800, 600);
  EXPECT_LT(measurements, 13 * 8);  // 13 texts
}

TEST(Memory, measuresAgainOnlyWhatChanged) {
  int measurements = 0;
  const std::vector<View> rows(300, row(2, views(text("name"), spacer(), text("12"))));
  LayoutTree tree(column(2, rows), &measurements);
  tree.placed(400, 6000);
  EXPECT_GE(std::exchange(measurements, 0), 600);

  tree.at(299).at(2).changeText("1234");
  EXPECT_TRUE(tree.node().needsLayout());
  EXPECT_TRUE(tree.at(299).node().needsLayout());
  EXPECT_FALSE(tree.at(298).node().needsLayout());
  tree.placed(400, 6000);
  EXPECT_FALSE(tree.node().needsLayout());
  EXPECT_EQ(tree.at(299).at(2).frame().width, 40);
  EXPECT_GE(measurements, 1);
  EXPECT_LE(measurements, 8);
}

std::optional<double> offer(RandomViews& random) {
  static const double odd[] = {-5, unlimited, -unlimited, std::numeric_limits<double>::quiet_NaN()};
  const int kind = random.below(4);
  if (kind == 0) return std::nullopt;
  return kind == 1 ? odd[random.below(4)] : random.length();
}

void expectSoundFrames(const LayoutTree& tree) {
  for (const Rect& frame : tree.allFrames()) {
    for (const double value : {frame.x, frame.y, frame.width, frame.height}) {
      ASSERT_TRUE(std::isfinite(value) && value == std::floor(value)) << testing::PrintToString(frame);
    }
    ASSERT_GE(frame.width, 0);
    ASSERT_GE(frame.height, 0);
  }
}

void expectNoOverlapInStacks(const LayoutTree& tree) {
  const bool isRow = tree.view().as<HStackContent>() != nullptr;
  if (isRow || tree.view().as<VStackContent>() != nullptr) {
    double end = -unlimited;
    for (const auto& child : tree.children()) {
      if (child->view().isEmpty()) continue;
      const Rect& frame = child->frame();
      ASSERT_GE(isRow ? frame.x : frame.y, end);
      end = isRow ? frame.x + frame.width : frame.y + frame.height;
    }
  }
  for (const auto& child : tree.children()) expectNoOverlapInStacks(*child);
}

TEST(AnyTree, isArrangedSoundlyAtAnyOffer) {
  for (unsigned seed = 0; seed < 400; ++seed) {
    SCOPED_TRACE(seed);
    RandomViews random(seed, {0, 0.5, 10, 33.3, 100, 640, 5000.25});
    LayoutTree tree(random.any(6));
    for (int round = 0; round < 6; ++round) {
      const Proposal proposal{offer(random), offer(random)};
      const Size size = tree.node().measure(proposal);
      ASSERT_GE(size.width, 0);
      ASSERT_GE(size.height, 0);
      tree.node().place({offer(random).value_or(0), 0, offer(random).value_or(1), random.length()}, proposal);
      expectSoundFrames(tree);
      expectNoOverlapInStacks(tree);
      if (testing::Test::HasFatalFailure()) return;
    }
    const auto before = tree.placed(640, 480).allFrames();
    tree.placed(123, 45);
    ASSERT_EQ(tree.placed(640, 480).allFrames(), before);
  }
}

}  // namespace
}  // namespace kestrune::ui::test
