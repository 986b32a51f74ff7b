#include "ui/view/LayoutNode.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "ui/view/Arranger.h"
#include "ui/view/Children.h"

namespace kestrune::ui {
namespace {

constexpr std::size_t measurementsKept = 8;

double validLength(double length) {
  return length > 0 ? length : 0;  // NaN is not greater than 0 either
}

Proposal valid(const Proposal& proposal) {
  Proposal result = proposal;
  if (result.width) result.width = validLength(*result.width);
  if (result.height) result.height = validLength(*result.height);
  return result;
}

double finite(double value) {
  return std::isfinite(value) ? value : 0;
}

// Ties are rounded the same way everywhere, so that a width in whole pixels survives at any position.
double wholePixel(double position) {
  return std::floor(position + 0.5);
}

Rect wholePixels(const Rect& rect) {
  const double left = wholePixel(rect.x);
  const double top = wholePixel(rect.y);
  return {left, top, wholePixel(rect.x + rect.width) - left, wholePixel(rect.y + rect.height) - top};
}

}  // namespace

class LayoutNode::ChildNodes final : public Children {
 public:
  explicit ChildNodes(const LayoutNode& node) : nodes_(node.children_) {}

  std::size_t count() const override { return nodes_.size(); }
  bool isEmpty(std::size_t child) const override { return nodes_[child]->isEmpty(); }
  const Arrangement& arrangement(std::size_t child) const override { return nodes_[child]->arrangement_; }
  LeafMetrics metrics(std::size_t child, const Proposal& proposal) const override {
    return nodes_[child]->metrics(proposal);
  }

 private:
  const std::vector<LayoutNode*>& nodes_;
};

LayoutNode::~LayoutNode() {
  for (LayoutNode* child : children_) child->parent_ = nullptr;
  if (parent_ != nullptr) parent_->unlink(*this);
}

void LayoutNode::setContent(const Content& content) {
  Arrangement next = arrangementOf(content);
  if (next == arrangement_) return;
  arrangement_ = std::move(next);
  invalidate();
}

void LayoutNode::setChildren(std::vector<LayoutNode*> children) {
  if (children == children_) return;
  for (LayoutNode* child : children_) child->parent_ = nullptr;
  for (LayoutNode* child : children) {
    if (child->parent_ != nullptr) child->parent_->unlink(*child);
    child->parent_ = this;
  }
  children_ = std::move(children);
  invalidate();
}

void LayoutNode::unlink(const LayoutNode& child) {
  std::erase(children_, &child);
  invalidate();
}

void LayoutNode::setMeasure(std::function<LeafMetrics(Proposal)> measure) {
  measure_ = std::move(measure);
  invalidate();
}

void LayoutNode::invalidate() {
  for (LayoutNode* node = this; node != nullptr; node = node->parent_) {
    node->forgetMeasured();
  }
}

Size LayoutNode::measure(Proposal proposal) {
  if (parent_ == nullptr) setAxis(Axis::vertical);
  return metrics(valid(proposal)).size;
}

void LayoutNode::place(Rect bounds) {
  place(bounds, {bounds.width, bounds.height});
}

void LayoutNode::place(Rect bounds, Proposal proposal) {
  bounds = {finite(bounds.x), finite(bounds.y), finite(validLength(bounds.width)),
            finite(validLength(bounds.height))};
  proposal = valid(proposal);
  if (proposal.width == unlimited) proposal.width = bounds.width;
  if (proposal.height == unlimited) proposal.height = bounds.height;
  const Size size = measure(proposal);
  bounds.x += std::max(0.0, (bounds.width - size.width) / 2);
  bounds.y += std::max(0.0, (bounds.height - size.height) / 2);
  settle({bounds.x, bounds.y, size.width, size.height}, proposal);
}

bool LayoutNode::isEmpty() const {
  if (std::holds_alternative<std::monostate>(arrangement_)) return true;
  const auto* asChild = std::get_if<AsChild>(&arrangement_);
  if (asChild == nullptr || !asChild->isEmptyWithChild) return false;
  return children_.empty() || children_.front()->isEmpty();
}

void LayoutNode::setAxis(Axis axis) {
  if (axis == axis_) return;
  axis_ = axis;
  forgetMeasured();  // the nodes above are being measured or placed themselves
}

void LayoutNode::forgetMeasured() {
  measured_.clear();
  oldestMeasured_ = 0;
  needsLayout_ = true;
}

LeafMetrics LayoutNode::metrics(const Proposal& proposal) {
  for (const Measured& measured : measured_) {
    if (measured.proposal == proposal) return measured.metrics;
  }
  const LeafMetrics result = computeMetrics(proposal);
  if (measured_.size() < measurementsKept) {
    measured_.push_back({proposal, result});
  } else {
    measured_[oldestMeasured_] = {proposal, result};
    oldestMeasured_ = (oldestMeasured_ + 1) % measurementsKept;
  }
  return result;
}

LeafMetrics LayoutNode::computeMetrics(const Proposal& proposal) {
  if (measure_ && std::holds_alternative<OwnSize>(arrangement_)) {
    LeafMetrics result = measure_(proposal);
    result.size = {validLength(result.size.width), validLength(result.size.height)};
    if (result.baseline) result.baseline = finite(*result.baseline);
    return result;
  }
  const Arranged arranged = arrange(proposal);
  for (const PlacedChild& item : arranged.items) {
    if (!item.baseline) continue;
    const double baseline = item.rect.y + *item.baseline;
    if (std::isfinite(baseline)) return {arranged.size, baseline};
  }
  return {arranged.size, std::nullopt};
}

Arranged LayoutNode::arrange(const Proposal& proposal) {
  Axis axis = axis_;
  if (std::holds_alternative<HStackContent>(arrangement_)) axis = Axis::horizontal;
  if (std::holds_alternative<VStackContent>(arrangement_)) axis = Axis::vertical;
  for (LayoutNode* child : children_) child->setAxis(axis);
  return Arranger(ChildNodes(*this), axis_, proposal).arrange(arrangement_);
}

void LayoutNode::settle(const Rect& bounds, const Proposal& proposal) {
  if (!needsLayout_ && !isLeftOut_ && bounds == bounds_ && proposal == proposal_) return;
  isLeftOut_ = false;
  const Arranged arranged = arrange(proposal);
  auto item = arranged.items.begin();
  for (std::size_t child = 0; child < children_.size(); ++child) {
    if (item != arranged.items.end() && item->child == child) {
      children_[child]->settle(
          {bounds.x + item->rect.x, bounds.y + item->rect.y, item->rect.width, item->rect.height},
          item->proposal);
      ++item;
    } else {
      children_[child]->leaveOut();
    }
  }
  bounds_ = bounds;
  proposal_ = proposal;
  frame_ = wholePixels(bounds);
  needsLayout_ = false;
}

void LayoutNode::leaveOut() {
  isLeftOut_ = true;
  for (LayoutNode* child : children_) child->leaveOut();
}

}  // namespace kestrune::ui
