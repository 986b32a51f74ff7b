#pragma once

#include <vector>

#include "ui/view/Children.h"
#include "ui/view/Layout.h"

namespace kestrune::ui {

// Where a node's children stand when the node is offered a certain size. Children that are left out are
// missing.
struct Arranged {
  Size size;
  std::vector<PlacedChild> items;
};

// The arithmetic of each kind of view, one step deep: asks the children for their sizes and puts them in
// their places.
class Arranger {
 public:
  // `around`: the direction of the innermost stack around the node. All must outlive the arranger.
  Arranger(const Children& children, Axis around, const Proposal& offered)
      : children_(children), around_(around), offered_(offered) {}

  Arranged arrange(const Arrangement& arrangement) const { return std::visit(*this, arrangement); }

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
  using Items = std::vector<PlacedChild>;

  double idealWidth(const ColumnsContent& grid) const;
  Items offerEach(const Proposal& proposal) const;
  Items offerOnly(const Proposal& proposal) const;

  const Children& children_;
  Axis around_;
  const Proposal& offered_;
};

}  // namespace kestrune::ui
