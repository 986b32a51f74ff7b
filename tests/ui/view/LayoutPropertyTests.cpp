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
  // The same tree with some of its parts replaced, moved, taken away or added.
  View changed(View view, int depth) {
    if (below(8) == 0) return any(depth);
    if (auto* text = std::get_if<TextContent>(&view.content); text != nullptr && below(3) == 0) {
      text->string.assign(below(30), 'x');
    }
    for (View& child : view.children) child = changed(std::move(child), depth - 1);
    if (!isStack(view)) return view;
    if (below(4) == 0) std::ranges::shuffle(view.children, engine_);
    if (below(4) == 0 && !view.children.empty()) view.children.pop_back();
    if (below(4) == 0) view.children.insert(view.children.begin(), any(std::max(0, depth - 1)));
    if (auto* stack = std::get_if<HStackContent>(&view.content); stack != nullptr && below(6) == 0) {
      view.content = VStackContent{stack->spacing, HorizontalAlignment::trailing};
    }
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
  static bool isStack(const View& view) {
    return view.as<HStackContent>() != nullptr || view.as<VStackContent>() != nullptr ||
           view.as<ZStackContent>() != nullptr || view.as<AdaptiveGridContent>() != nullptr;
  }
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

TEST(AnyTree, LooksTheSameHoweverItCameAbout) {
  for (unsigned seed = 0; seed < 400; ++seed) {
    SCOPED_TRACE(seed);
    RandomViews random(seed);
    View view = random.any(5);
    LayoutTree changed(view);
    for (int step = 0; step < 5; ++step) {
      const double width = random.length();
      view = random.changed(std::move(view), 5);
      if (!sameKind(changed.view(), view)) break;
      changed.show(view);
      LayoutTree fresh(view);
      ASSERT_EQ(changed.placed(width, 300).allFrames(), fresh.placed(width, 300).allFrames())
          << "step " << step;
    }
  }
}

}  // namespace
}  // namespace kestrune::ui::test
