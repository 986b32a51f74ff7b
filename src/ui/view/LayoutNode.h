#pragma once

#include <functional>
#include <vector>

#include "ui/view/Arrangement.h"
#include "ui/view/Layout.h"

namespace kestrune::ui {

struct Arranged;

// One node of the tree that is laid out. A mounted view keeps one, linked as the views are. Pure arithmetic:
// leaves measure themselves through `setMeasure`. The layout stops at a scroll view and at the panes of a
// split view: these are measured from outside only, and their contents are roots of their own. Nodes may be
// destroyed in any order; a destroyed node leaves its parent's children.
class LayoutNode {
 public:
  LayoutNode() = default;
  ~LayoutNode();
  LayoutNode(const LayoutNode&) = delete;
  LayoutNode& operator=(const LayoutNode&) = delete;

  // What decides the arrangement. A change discards what was measured, here and in all nodes above.
  void setContent(const Content& content);
  void setChildren(std::vector<LayoutNode*> children);
  // For a text, symbol, image or control, which have a size of their own; without it they fill what they are
  // offered. The sizes it returns are finite unless something unlimited is offered.
  void setMeasure(std::function<LeafMetrics(Proposal)> measure);
  // Call when `measure` would return something else than before.
  void invalidate();

  // The size that the view chooses; infinite only in a dimension that is offered `unlimited`.
  Size measure(Proposal proposal);
  // Arranges the node and all below it in `bounds`; `frame` then returns where each of them is, in the
  // coordinates of `bounds` and in whole pixels. The node is offered the size of `bounds`, or `proposal` if
  // that is what its size was measured with. A node that chooses less is centred; one that chooses more
  // reaches past the trailing and the bottom edge.
  void place(Rect bounds);
  void place(Rect bounds, Proposal proposal);
  const Rect& frame() const { return frame_; }
  // True if the last placement had no room for the node; its frame means nothing then.
  bool isLeftOut() const { return isLeftOut_; }
  // True if the node or one below it was invalidated since the last `place`.
  bool needsLayout() const { return needsLayout_; }

 private:
  class ChildNodes;
  struct Measured {
    Proposal proposal;
    LeafMetrics metrics;
  };

  bool isEmpty() const;
  void unlink(const LayoutNode& child);
  void setAxis(Axis axis);
  void forgetMeasured();
  LeafMetrics metrics(const Proposal& proposal);
  LeafMetrics computeMetrics(const Proposal& proposal);
  Arranged arrange(const Proposal& proposal);
  void settle(const Rect& bounds, const Proposal& proposal);
  void leaveOut();

  Arrangement arrangement_;
  std::vector<LayoutNode*> children_;
  LayoutNode* parent_ = nullptr;
  std::function<LeafMetrics(Proposal)> measure_;
  Axis axis_ = Axis::vertical;  // of the innermost stack around it

  // The latest measurements. There is room for the few proposals that are ever made: the smallest, largest
  // and ideal sizes in each direction and the size that is really available.
  std::vector<Measured> measured_;
  std::size_t oldestMeasured_ = 0;
  Rect bounds_;  // before rounding
  Proposal proposal_;
  Rect frame_;
  bool needsLayout_ = true;
  bool isLeftOut_ = false;
};

}  // namespace kestrune::ui
