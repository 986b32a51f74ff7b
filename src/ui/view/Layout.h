#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <variant>
#include <vector>

#include "ui/view/View.h"

// Arranges views: a parent proposes a size to a child, the child chooses its own, the parent places it. Pure
// arithmetic; what a leaf measures comes from whoever draws it.
namespace kestrune::ui {

struct Size {
  double width = 0;
  double height = 0;
  friend bool operator==(const Size&, const Size&) = default;
};

struct Rect {
  double x = 0;
  double y = 0;
  double width = 0;
  double height = 0;
  friend bool operator==(const Rect&, const Rect&) = default;
};

// What a parent offers, for each dimension: absent asks for the ideal size, `unlimited` for the largest, 0
// for the smallest.
struct Proposal {
  std::optional<double> width;
  std::optional<double> height;
  friend bool operator==(const Proposal&, const Proposal&) = default;
};

// The size that a leaf takes for a proposal, and how far below its top the first line of text stands; without
// text its bottom counts.
struct LeafMetrics {
  Size size;
  std::optional<double> baseline;
};

enum class Axis : std::uint8_t { horizontal, vertical };

// The ideal length of what has no size of its own, such as a chart or a divider.
inline constexpr double defaultIdealLength = 10;

// What of a view's content the arrangement depends on. Of the kinds that are not named here, text, symbols,
// images and controls have a size of their own, and backgrounds, buttons and components are as large as their
// one child.
struct OwnSize {
  friend bool operator==(OwnSize, OwnSize) = default;
};
struct FillsOffer {
  double ideal = 0;  // in both dimensions
  friend bool operator==(FillsOffer, FillsOffer) = default;
};
struct AsChild {
  bool isEmptyWithChild =
      false;  // it is no more than its child, and takes no part where that is an empty view
  friend bool operator==(AsChild, AsChild) = default;
};
using Arrangement = std::variant<std::monostate, OwnSize, FillsOffer, AsChild, SpacerContent, DividerContent,
                                 HStackContent, VStackContent, ZStackContent, AdaptiveGridContent,
                                 ColumnsContent, FirstFitContent, PaddingContent, FrameContent>;

// One node of the tree that is arranged. Whoever mounts views keeps one for each view and links them as the
// views are. The layout stops at a scroll view and at the panes of a split view: these are measured from
// outside only, and their contents are roots of their own. Nodes may be destroyed in any order; one that goes
// leaves its parent's children.
class LayoutNode {
 public:
  LayoutNode() = default;
  ~LayoutNode();
  LayoutNode(const LayoutNode&) = delete;
  LayoutNode& operator=(const LayoutNode&) = delete;

  // What decides the arrangement. A change of it forgets what was measured, here and in all nodes above.
  void setContent(const Content& content);
  void setChildren(std::vector<LayoutNode*> children);
  // For a text, symbol, image or picker, whose size is its own; without it these fill what they are offered.
  // The sizes it yields are finite unless something unlimited is offered.
  void setMeasure(std::function<LeafMetrics(Proposal)> measure);
  // What `measure` yields has changed.
  void invalidate();

  // The size that the view chooses; infinite only where it is offered so much.
  Size measure(Proposal proposal);
  // Arranges the node and all below it in `bounds`; their `frame` then says where, in the coordinates of
  // `bounds` and in whole pixels. The node is offered the size of `bounds`, or `proposal` if that is what its
  // size was measured with. A node that chooses less stands in the middle; one that chooses more reaches past
  // the trailing and the bottom edge.
  void place(Rect bounds);
  void place(Rect bounds, Proposal proposal);
  const Rect& frame() const { return frame_; }
  // The surroundings found no place for the node when they were placed; its frame means nothing then.
  bool isLeftOut() const { return isLeftOut_; }
  // True once `invalidate` was called on this node or one below it and `place` hasn't been since.
  bool needsLayout() const { return needsLayout_; }

 private:
  friend class Arranger;
  struct Measured {
    Proposal proposal;
    LeafMetrics metrics;
  };

  bool isEmpty() const;
  void unlink(const LayoutNode& child);
  void setAxis(Axis axis);
  LeafMetrics metrics(const Proposal& proposal);
  LeafMetrics computeMetrics(const Proposal& proposal);
  double leastLength(Axis along);
  double flexibility(Axis along);
  void settle(const Rect& bounds, const Proposal& proposal);
  void leaveOut();

  Arrangement arrangement_;
  std::vector<LayoutNode*> children_;
  LayoutNode* parent_ = nullptr;
  std::function<LeafMetrics(Proposal)> measure_;
  Axis axis_ = Axis::vertical;  // of the innermost stack around it

  // The latest measurements. There is room for the few proposals that ever come up: the smallest, largest and
  // ideal sizes in each direction and what the surroundings really offer.
  std::vector<Measured> measured_;
  std::size_t oldestMeasured_ = 0;
  Rect bounds_;  // before rounding
  Proposal proposal_;
  Rect frame_;
  bool needsLayout_ = true;
  bool isLeftOut_ = false;
};

}  // namespace kestrune::ui
