#include <cmath>
#include <limits>

#include <gtest/gtest.h>

#include "ui/view/LayoutTree.h"
#include "ui/view/RandomViews.h"

namespace kestrune::ui::test {
namespace {

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
