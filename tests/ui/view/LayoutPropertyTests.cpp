#include <cmath>
#include <limits>
#include <random>
#include <string>

#include <gtest/gtest.h>

#include "ui/view/LayoutTree.h"

namespace kestrune::ui::test {
namespace {

// Makes trees of all kinds of views, the same ones for the same seed.
class RandomViews {
 public:
  explicit RandomViews(unsigned seed) : engine_(seed) {}

  View any(int depth) {
    View view = depth > 0 ? branch(depth) : leaf();
    if (below(5) == 0) view = std::move(view).withKey(std::to_string(below(3)));
    return view;
  }
  double length() {
    static const double lengths[] = {0, 0.5, 10, 33.3, 100, 640, 5000.25};
    return lengths[below(std::size(lengths))];
  }
  std::optional<double> offer() {
    static const double odd[] = {-5, unlimited, -unlimited, std::numeric_limits<double>::quiet_NaN()};
    const std::size_t kind = below(4);
    if (kind == 0) return std::nullopt;
    return kind == 1 ? odd[below(std::size(odd))] : length();
  }

 private:
  std::size_t below(std::size_t count) {
    return std::uniform_int_distribution<std::size_t>(0, count - 1)(engine_);
  }
  Extent extent() {
    Extent result;
    if (below(4) == 0) result.fixed = length();
    if (below(3) == 0) result.min = length();
    if (below(3) == 0) result.max = below(2) == 0 ? unlimited : length();
    return result;
  }
  Alignment alignment() {
    return {static_cast<HorizontalAlignment>(below(3)), static_cast<VerticalAlignment>(below(4))};
  }
  View leaf() {
    switch (below(7)) {
      case 0:
        return {};
      case 1:
        return symbol("s");
      case 2:
        return spacer(length());
      case 3:
        return divider();
      case 4:
        return chart();
      case 5:
        return scroll(text("inside"));
      default:
        return verbatim(std::string(below(30), 'x'));
    }
  }
  View branch(int depth) {
    switch (below(6)) {
      case 0:
        return any(depth - 1).padding(Insets{length(), 1, 2, length()});
      case 1:
        return any(depth - 1).frame(extent(), extent(), alignment());
      case 2:
        return any(depth - 1).background({});
      default:
        break;
    }
    std::vector<View> children;
    for (std::size_t count = below(5); count > 0; --count) children.push_back(any(depth - 1));
    switch (below(7)) {
      case 0:
        return zstack(alignment(), std::move(children));
      case 4:
        return columns(static_cast<int>(1 + below(3)), length(), std::move(children), {1, 2, 1});
      case 5:
        return firstFit(std::move(children));
      case 1:
        return adaptiveGrid(length(), length(), std::move(children));
      case 2:
        return hstack(length(), alignment().vertical, std::move(children));
      case 3:
        return vstack(length(), alignment().horizontal, std::move(children));
      default:
        return hstack(8, VerticalAlignment::firstTextBaseline, std::move(children));
    }
  }

  std::mt19937 engine_;
};

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

TEST(AnyTree, IsArrangedSoundlyInWhateverItIsOffered) {
  for (unsigned seed = 0; seed < 400; ++seed) {
    SCOPED_TRACE(seed);
    RandomViews random(seed);
    LayoutTree tree(random.any(5));
    for (int round = 0; round < 6; ++round) {
      const Proposal proposal{random.offer(), random.offer()};
      const Size size = tree.node().measure(proposal);
      ASSERT_GE(size.width, 0);
      ASSERT_GE(size.height, 0);
      tree.node().place({random.offer().value_or(0), 0, random.offer().value_or(1), random.length()},
                        proposal);
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
