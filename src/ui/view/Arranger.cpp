#include "ui/view/Arranger.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace kestrune::ui {
namespace {

constexpr double hairline = 1;

Axis across(Axis along) {
  return along == Axis::horizontal ? Axis::vertical : Axis::horizontal;
}
double& length(Rect& rect, Axis axis) {
  return axis == Axis::horizontal ? rect.width : rect.height;
}
double& position(Rect& rect, Axis axis) {
  return axis == Axis::horizontal ? rect.x : rect.y;
}
const std::optional<double>& length(const Proposal& proposal, Axis axis) {
  return axis == Axis::horizontal ? proposal.width : proposal.height;
}
Proposal withLength(Proposal proposal, Axis axis, double length) {
  (axis == Axis::horizontal ? proposal.width : proposal.height) = length;
  return proposal;
}
Size sizeAlong(Axis along, double length, double thickness) {
  return along == Axis::horizontal ? Size{length, thickness} : Size{thickness, length};
}

// A length on both sides of the line that an alignment brings together.
struct Sides {
  double before = 0;
  double after = 0;

  void widenTo(const Sides& other) {
    before = std::max(before, other.before);
    after = std::max(after, other.after);
  }
};

Sides sides(HorizontalAlignment alignment, const Arranged::Item& item) {
  const double width = item.rect.width;
  switch (alignment) {
    case HorizontalAlignment::leading:
      return {0, width};
    case HorizontalAlignment::center:
      return {width / 2, width / 2};
    case HorizontalAlignment::trailing:
      return {width, 0};
  }
  return {};
}

Sides sides(VerticalAlignment alignment, const Arranged::Item& item) {
  const double height = item.rect.height;
  switch (alignment) {
    case VerticalAlignment::top:
      return {0, height};
    case VerticalAlignment::center:
      return {height / 2, height / 2};
    case VerticalAlignment::bottom:
      return {height, 0};
    case VerticalAlignment::firstTextBaseline: {
      const double baseline = item.baseline.value_or(height);
      return {baseline, std::max(0.0, height - baseline)};
    }
  }
  return {};
}

// Aligns the items with each other in one dimension; yields the length that they take together.
template <class Alignment>
double align(std::vector<Arranged::Item>& items, Axis axis, Alignment alignment) {
  Sides all;
  for (const auto& item : items) all.widenTo(sides(alignment, item));
  for (auto& item : items) position(item.rect, axis) = all.before - sides(alignment, item).before;
  return all.before + all.after;
}

// Puts the items behind each other; yields the length that they take together.
double lineUp(std::vector<Arranged::Item>& items, Axis axis, double spacing) {
  double end = 0;
  for (auto& item : items) {
    if (&item != &items.front()) end += spacing;
    position(item.rect, axis) = end;
    end += length(item.rect, axis);
  }
  return std::max(0.0, end);
}

std::optional<double> offerWithin(const Extent& extent, const std::optional<double>& offered) {
  if (extent.fixed) return extent.fixed;
  if (!offered) return std::nullopt;
  return std::max(extent.min.value_or(0), std::min(*offered, extent.max.value_or(unlimited)));
}

// What the extent doesn't say the child's own length does.
double chosenLength(const Extent& extent, const std::optional<double>& offered, double child) {
  if (extent.fixed) return *extent.fixed;
  if (!extent.min && !extent.max) return child;
  const double least = extent.min.value_or(std::min(child, extent.max.value_or(child)));
  const double most = std::max(least, extent.max.value_or(child));
  return std::clamp(offered.value_or(child), least, most);
}

double startWithin(const Sides& child, HorizontalAlignment alignment, double width) {
  if (alignment == HorizontalAlignment::leading) return 0;
  return alignment == HorizontalAlignment::center ? width / 2 - child.before : width - child.before;
}

double startWithin(const Sides& child, VerticalAlignment alignment, double height) {
  if (alignment == VerticalAlignment::center) return height / 2 - child.before;
  return alignment == VerticalAlignment::bottom ? height - child.before : 0;
}

}  // namespace

Arranged Arranger::arrange() const {
  Axis axis = node_.axis_;
  if (std::holds_alternative<HStackContent>(node_.arrangement_)) axis = Axis::horizontal;
  if (std::holds_alternative<VStackContent>(node_.arrangement_)) axis = Axis::vertical;
  for (LayoutNode* child : node_.children_) child->setAxis(axis);
  return std::visit(*this, node_.arrangement_);
}

Arranged::Item Arranger::offer(LayoutNode& child, const Proposal& proposal) const {
  const LeafMetrics metrics = child.metrics(proposal);
  return {&child, proposal, {0, 0, metrics.size.width, metrics.size.height}, metrics.baseline};
}

Arranger::Items Arranger::offerEach(const Proposal& proposal) const {
  Items items;
  items.reserve(node_.children_.size());
  for (LayoutNode* child : node_.children_) {
    if (!child->isEmpty()) items.push_back(offer(*child, proposal));
  }
  return items;
}

Arranger::Items Arranger::offerOnly(const Proposal& proposal) const {
  if (node_.children_.empty()) return {};
  return {offer(*node_.children_.front(), proposal)};
}

// ---- leaves
// -------------------------------------------------------------------------------------------------

Arranged Arranger::operator()(const OwnSize&) const {
  return (*this)(FillsOffer{defaultIdealLength});
}

Arranged Arranger::operator()(const FillsOffer& content) const {
  return {{offered_.width.value_or(content.ideal), offered_.height.value_or(content.ideal)}, {}};
}

Arranged Arranger::operator()(const SpacerContent& spacer) const {
  const double least = std::max(0.0, spacer.minLength);
  return {sizeAlong(node_.axis_, std::max(least, length(offered_, node_.axis_).value_or(least)), 0), {}};
}

Arranged Arranger::operator()(const DividerContent&) const {
  const Axis line = across(node_.axis_);
  return {sizeAlong(line, length(offered_, line).value_or(defaultIdealLength), hairline), {}};
}

// ---- one child
// ----------------------------------------------------------------------------------------------

Arranged Arranger::operator()(const AsChild&) const {
  Items items = offerOnly(offered_);
  if (items.empty()) return {};
  const Rect& child = items.front().rect;
  return {{child.width, child.height}, std::move(items)};
}

Arranged Arranger::operator()(const PaddingContent& padding) const {
  const Insets& insets = padding.insets;
  const double horizontal = insets.leading + insets.trailing;
  const double vertical = insets.top + insets.bottom;
  Proposal inner = offered_;
  if (inner.width) inner.width = std::max(0.0, *inner.width - horizontal);
  if (inner.height) inner.height = std::max(0.0, *inner.height - vertical);

  Arranged arranged{{}, offerOnly(inner)};
  Size child;
  for (auto& item : arranged.items) {
    item.rect.x = insets.leading;
    item.rect.y = insets.top;
    child = {item.rect.width, item.rect.height};
  }
  arranged.size = {std::max(0.0, child.width + horizontal), std::max(0.0, child.height + vertical)};
  return arranged;
}

Arranged Arranger::operator()(const FrameContent& frame) const {
  Arranged arranged{
      {}, offerOnly({offerWithin(frame.width, offered_.width), offerWithin(frame.height, offered_.height)})};
  Size child;
  for (const auto& item : arranged.items) child = {item.rect.width, item.rect.height};
  arranged.size = {chosenLength(frame.width, offered_.width, child.width),
                   chosenLength(frame.height, offered_.height, child.height)};
  for (auto& item : arranged.items) {
    const Alignment& alignment = frame.alignment;
    item.rect.x = startWithin(sides(alignment.horizontal, item), alignment.horizontal, arranged.size.width);
    item.rect.y = startWithin(sides(alignment.vertical, item), alignment.vertical, arranged.size.height);
  }
  return arranged;
}

// ---- several children
// ---------------------------------------------------------------------------------------

Arranged Arranger::operator()(const HStackContent& stack) const {
  Items items = distribute(Axis::horizontal, stack.spacing);
  const double width = lineUp(items, Axis::horizontal, stack.spacing);
  const double height = align(items, Axis::vertical, stack.alignment);
  if (stack.isEvenlyTall && !offered_.height) {
    const Proposal even{offered_.width, height};
    return Arranger(node_, even)(stack);
  }
  return {{width, height}, std::move(items)};
}

Arranged Arranger::operator()(const VStackContent& stack) const {
  Items items = distribute(Axis::vertical, stack.spacing);
  const double width = align(items, Axis::horizontal, stack.alignment);
  const double height = lineUp(items, Axis::vertical, stack.spacing);
  return {{width, height}, std::move(items)};
}

Arranged Arranger::operator()(const ZStackContent& stack) const {
  Items items = offerEach(offered_);
  const double width = align(items, Axis::horizontal, stack.alignment.horizontal);
  const double height = align(items, Axis::vertical, stack.alignment.vertical);
  return {{width, height}, std::move(items)};
}

Arranger::Items Arranger::distribute(Axis along, double spacing) const {
  const auto& offered = length(offered_, along);
  if (!offered) return offerEach(offered_);
  std::vector<LayoutNode*> children;
  children.reserve(node_.children_.size());
  std::ranges::copy_if(node_.children_, std::back_inserter(children),
                       [](const auto* child) { return !child->isEmpty(); });
  if (children.empty()) return {};
  const double gaps = spacing * static_cast<double>(children.size() - 1);
  return shareOut(children, along, std::max(0.0, *offered - gaps));
}

// Each takes of an equal share of what is left; what it leaves of it goes to those after it. So those that
// can adapt least come first and, among those that take whatever they get, those that need most. Spacers come
// last: they take only what nothing else wants, beyond their least length.
Arranger::Items Arranger::shareOut(const std::vector<LayoutNode*>& children, Axis along,
                                   double length) const {
  std::vector<Candidate> order = candidates(children, along, length);
  double leastOfSpacers = 0;
  double spacers = 0;
  for (const Candidate& candidate : order) {
    if (!candidate.isSpacer) continue;
    leastOfSpacers += candidate.least;
    spacers += 1;
  }

  Items items(children.size());
  double others = static_cast<double>(children.size()) - spacers;
  for (const Candidate& next : order) {
    double& sharing = next.isSpacer ? spacers : others;
    const double kept = next.isSpacer ? 0 : leastOfSpacers;
    const double share = std::max(0.0, length - kept) / sharing;
    sharing -= 1;
    Arranged::Item& item = items[next.index];
    item = offer(*children[next.index], withLength(offered_, along, share));
    if (length < unlimited) length = std::max(0.0, length - ui::length(item.rect, along));
  }
  return items;
}

std::vector<Arranger::Candidate> Arranger::candidates(const std::vector<LayoutNode*>& children, Axis along,
                                                      double length) const {
  const bool orderMatters = children.size() > 1 && length > 0 && length < unlimited;
  std::vector<Candidate> order;
  order.reserve(children.size());
  for (std::size_t i = 0; i < children.size(); ++i) {
    if (const auto* spacer = std::get_if<SpacerContent>(&children[i]->arrangement_)) {
      order.push_back({i, true, unlimited, std::max(0.0, spacer->minLength)});
    } else if (orderMatters) {
      // Asked without regard to the other dimension, so that deep trees don't ask for every combination.
      order.push_back({i, false, children[i]->flexibility(along), children[i]->leastLength(along)});
    } else {
      order.push_back({i, false, 0, 0});
    }
  }
  std::ranges::stable_sort(order, [](const Candidate& a, const Candidate& b) {
    if (a.isSpacer != b.isSpacer) return b.isSpacer;
    return a.flexibility != b.flexibility ? a.flexibility < b.flexibility : a.least > b.least;
  });
  return order;
}

Arranged Arranger::operator()(const AdaptiveGridContent& grid) const {
  const double width = offered_.width.value_or(grid.minColumnWidth);
  const double pitch = grid.minColumnWidth + grid.spacing;
  const auto cells = static_cast<double>(node_.children_.size());
  const bool anyNumberFits = pitch <= 0 || width == unlimited;
  const double columns = std::max(1.0, anyNumberFits ? cells : std::floor((width + grid.spacing) / pitch));
  const double columnWidth = std::max(0.0, (width - (columns - 1) * grid.spacing) / columns);

  Arranged arranged{{width, 0}, offerEach({columnWidth, std::nullopt})};
  double column = 0;
  double top = 0;
  double bottom = 0;
  for (auto& item : arranged.items) {
    if (column == columns) {
      column = 0;
      top = bottom + grid.spacing;
    }
    item.rect.x = column > 0 ? column * (columnWidth + grid.spacing) : 0;
    item.rect.y = top;
    bottom = std::max(bottom, top + item.rect.height);
    column += 1;
  }
  arranged.size.height = bottom;
  return arranged;
}

Arranged Arranger::operator()(const ColumnsContent& grid) const {
  const double width = offered_.width && *offered_.width < unlimited ? *offered_.width : idealWidth(grid);
  const double columns = std::max(1, grid.columns);
  const double columnWidth = std::max(0.0, (width - (columns - 1) * grid.spacing) / columns);

  Arranged arranged{{width, 0}, {}};
  double top = 0;
  std::size_t next = 0;
  while (next < node_.children_.size()) {
    Items row;
    double column = 0;
    while (next < node_.children_.size()) {
      const double span = spanOf(grid, next);
      if (column > 0 && column + span > columns) break;
      LayoutNode& child = *node_.children_[next++];
      row.push_back(offer(child, {span * columnWidth + (span - 1) * grid.spacing, std::nullopt}));
      row.back().rect.x = column * (columnWidth + grid.spacing);
      column += span;
    }
    double height = 0;
    for (const auto& item : row) height = std::max(height, item.rect.height);
    for (auto& item : row) {
      const double x = item.rect.x;
      item = offer(*item.node, {item.proposal.width, height});
      item.rect.x = x;
      item.rect.y = top;
      arranged.items.push_back(item);
    }
    arranged.size.height = top + height;
    top += height + grid.spacing;
  }
  return arranged;
}

double Arranger::spanOf(const ColumnsContent& grid, std::size_t child) {
  const int span = child < grid.spans.size() ? grid.spans[child] : 1;
  return std::clamp(span, 1, std::max(1, grid.columns));
}

// So wide that each cell has its own ideal width.
double Arranger::idealWidth(const ColumnsContent& grid) const {
  double columnWidth = 0;
  for (std::size_t i = 0; i < node_.children_.size(); ++i) {
    const double span = spanOf(grid, i);
    const double width = node_.children_[i]->metrics({std::nullopt, std::nullopt}).size.width;
    columnWidth = std::max(columnWidth, (width - (span - 1) * grid.spacing) / span);
  }
  const double columns = std::max(1, grid.columns);
  return columns * columnWidth + (columns - 1) * grid.spacing;
}

Arranged Arranger::operator()(const FirstFitContent&) const {
  if (node_.children_.empty()) return {};
  const auto fits = [this](LayoutNode* child) {
    return !offered_.width || child->metrics({std::nullopt, offered_.height}).size.width <= *offered_.width;
  };
  const auto found = std::ranges::find_if(node_.children_, fits);
  LayoutNode& chosen = found == node_.children_.end() ? *node_.children_.back() : **found;
  Items items{offer(chosen, offered_)};
  const Rect& rect = items.front().rect;
  return {{rect.width, rect.height}, std::move(items)};
}

}  // namespace kestrune::ui
