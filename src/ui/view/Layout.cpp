#include "ui/view/Layout.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "ui/view/Arranger.h"

namespace kestrune::ui {
namespace {

constexpr std::size_t measurementsKept = 8;
constexpr double iconIdealLength = 24;

struct ArrangementOf {
  Arrangement operator()(const std::monostate&) const { return {}; }
  Arrangement operator()(const TextContent&) const { return OwnSize{}; }
  Arrangement operator()(const SymbolContent&) const { return OwnSize{}; }
  Arrangement operator()(const ImageContent&) const { return OwnSize{}; }
  Arrangement operator()(const SegmentedPickerContent&) const { return OwnSize{}; }
  Arrangement operator()(const SwitchContent&) const { return OwnSize{}; }
  Arrangement operator()(const SliderContent&) const { return OwnSize{}; }
  Arrangement operator()(const RowsContent&) const { return OwnSize{}; }
  Arrangement operator()(const IconContent&) const { return FillsOffer{iconIdealLength}; }
  Arrangement operator()(const DayChartContent&) const { return FillsOffer{defaultIdealLength}; }
  Arrangement operator()(const AlertContent&) const { return {}; }
  Arrangement operator()(const FileExportContent&) const { return {}; }
  Arrangement operator()(const LineChartContent&) const { return FillsOffer{defaultIdealLength}; }
  Arrangement operator()(const BarContent&) const { return FillsOffer{defaultIdealLength}; }
  Arrangement operator()(const RingContent&) const { return FillsOffer{defaultIdealLength}; }
  Arrangement operator()(const ScrollContent&) const { return FillsOffer{}; }
  Arrangement operator()(const SplitContent&) const { return FillsOffer{}; }
  Arrangement operator()(const ButtonContent&) const { return AsChild{}; }
  Arrangement operator()(const MenuContent&) const { return AsChild{}; }
  Arrangement operator()(const BackgroundContent&) const { return AsChild{}; }
  Arrangement operator()(const ComponentContent&) const { return AsChild{true}; }
  template <class Same>
  Arrangement operator()(const Same& content) const {
    return content;
  }
};

double validLength(double length) {
  return length > 0 ? length : 0;  // no number is greater than 0 unless it is one
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

// Ties go the same way everywhere, so that what is whole pixels wide stays so wherever it stands.
double wholePixel(double position) {
  return std::floor(position + 0.5);
}

Rect wholePixels(const Rect& rect) {
  const double left = wholePixel(rect.x);
  const double top = wholePixel(rect.y);
  return {left, top, wholePixel(rect.x + rect.width) - left, wholePixel(rect.y + rect.height) - top};
}

}  // namespace

LayoutNode::~LayoutNode() {
  for (LayoutNode* child : children_) child->parent_ = nullptr;
  if (parent_ != nullptr) parent_->unlink(*this);
}

void LayoutNode::setContent(const Content& content) {
  Arrangement next = std::visit(ArrangementOf{}, content);
  if (next == arrangement_) return;
  arrangement_ = next;
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
    node->measured_.clear();
    node->oldestMeasured_ = 0;
    node->needsLayout_ = true;
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
  // Whoever asks is measuring or placing the node anew, so those above know already.
  axis_ = axis;
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
  const Arranged arranged = Arranger(*this, proposal).arrange();
  for (const Arranged::Item& item : arranged.items) {
    if (!item.baseline) continue;
    const double baseline = item.rect.y + *item.baseline;
    if (std::isfinite(baseline)) return {arranged.size, baseline};
  }
  return {arranged.size, std::nullopt};
}

double LayoutNode::leastLength(Axis along) {
  const Proposal least = along == Axis::horizontal ? Proposal{0, std::nullopt} : Proposal{std::nullopt, 0};
  const Size size = metrics(least).size;
  return along == Axis::horizontal ? size.width : size.height;
}

double LayoutNode::flexibility(Axis along) {
  const Proposal most =
      along == Axis::horizontal ? Proposal{unlimited, std::nullopt} : Proposal{std::nullopt, unlimited};
  const Size size = metrics(most).size;
  return (along == Axis::horizontal ? size.width : size.height) - leastLength(along);
}

void LayoutNode::settle(const Rect& bounds, const Proposal& proposal) {
  if (!needsLayout_ && !isLeftOut_ && bounds == bounds_ && proposal == proposal_) return;
  isLeftOut_ = false;
  const Arranged arranged = Arranger(*this, proposal).arrange();
  auto item = arranged.items.begin();
  for (LayoutNode* child : children_) {
    if (item != arranged.items.end() && item->node == child) {
      child->settle({bounds.x + item->rect.x, bounds.y + item->rect.y, item->rect.width, item->rect.height},
                    item->proposal);
      ++item;
    } else {
      child->leaveOut();
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
