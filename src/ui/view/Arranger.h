#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "ui/view/Layout.h"

namespace kestrune::ui {

// Where a node's children stand when it is offered a certain size.
struct Arranged {
  struct Item {
    LayoutNode* node = nullptr;
    Proposal proposal;  // what the child is offered
    Rect rect;          // the size that it chose for that, and where it stands in the node
    std::optional<double> baseline;
  };

  Size size;
  std::vector<Item> items;
};

// The arithmetic of each kind of view, one step deep: asks the children for their sizes and puts them in
// their places.
class Arranger {
 public:
  Arranger(LayoutNode& node, const Proposal& offered) : node_(node), offered_(offered) {}

  Arranged arrange() const;

  Arranged operator()(const std::monostate&) const { return {}; }
  Arranged operator()(const OwnSize& content) const;
  Arranged operator()(const FillsOffer& content) const;
  Arranged operator()(const AsChild& content) const;
  Arranged operator()(const SpacerContent& spacer) const;
  Arranged operator()(const DividerContent& divider) const;
  Arranged operator()(const HStackContent& stack) const;
  Arranged operator()(const VStackContent& stack) const;
  Arranged operator()(const ZStackContent& stack) const;
  Arranged operator()(const AdaptiveGridContent& grid) const;
  Arranged operator()(const ColumnsContent& grid) const;
  Arranged operator()(const FirstFitContent& content) const;
  Arranged operator()(const PaddingContent& padding) const;
  Arranged operator()(const FrameContent& frame) const;

 private:
  using Items = std::vector<Arranged::Item>;
  // A child that stands in line for its share of a stack's length.
  struct Candidate {
    std::size_t index = 0;
    bool isSpacer = false;
    double flexibility = 0;
    double least = 0;
  };

  static double spanOf(const ColumnsContent& grid, std::size_t child);
  double idealWidth(const ColumnsContent& grid) const;
  Items offerEach(const Proposal& proposal) const;
  Items offerOnly(const Proposal& proposal) const;
  Arranged::Item offer(LayoutNode& child, const Proposal& proposal) const;
  Items distribute(Axis along, double spacing) const;
  Items shareOut(const std::vector<LayoutNode*>& children, Axis along, double length) const;
  std::vector<Candidate> candidates(const std::vector<LayoutNode*>& children, Axis along,
                                    double length) const;

  LayoutNode& node_;
  const Proposal& offered_;
};

}  // namespace kestrune::ui
