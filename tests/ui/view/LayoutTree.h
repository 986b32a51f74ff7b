#pragma once

#include <algorithm>
#include <cmath>
#include <memory>
#include <ostream>
#include <utility>
#include <vector>

#include "ui/view/Diff.h"
#include "ui/view/LayoutNode.h"
#include "ui/view/View.h"

namespace kestrune::ui::test {

// Keeps a layout node for each view, as mounted views do. Letters are 10 wide and lines 16 high, with the
// baseline at 12; symbols are 20 by 20. Components are evaluated once.
class LayoutTree {
 public:
  explicit LayoutTree(View view, int* measurements = nullptr)
      : counter_(measurements), view_(std::move(view)) {
    if (const auto* component = view_.as<ComponentContent>()) view_.children = {component->make()->body()};
    const bool measures = view_.as<TextContent>() != nullptr || view_.as<SymbolContent>() != nullptr;
    if (measures) node_.setMeasure([this](Proposal proposal) { return measured(proposal); });
    node_.setContent(view_.content);
    std::vector<LayoutNode*> nodes;
    for (const View& child : view_.children)
      nodes.push_back(&children_.emplace_back(std::make_unique<LayoutTree>(child, counter_))->node_);
    if (view_.as<ScrollContent>() == nullptr && view_.as<SplitContent>() == nullptr)
      node_.setChildren(std::move(nodes));
  }

  void changeText(const std::string& string) {
    view_ = text(string);
    node_.invalidate();
  }

  LayoutNode& node() { return node_; }
  const View& view() const { return view_; }
  const std::vector<std::unique_ptr<LayoutTree>>& children() const { return children_; }
  LayoutTree& at(std::size_t child) { return *children_.at(child); }
  // Empty for a view that is left out.
  Rect frame() const { return node_.isLeftOut() ? Rect{} : node_.frame(); }
  std::vector<Rect> childFrames() const {
    std::vector<Rect> frames;
    frames.reserve(children_.size());
    for (const auto& child : children_) frames.push_back(child->frame());
    return frames;
  }
  // The frames of the view and of all below it, from top to bottom.
  std::vector<Rect> allFrames() const {
    std::vector<Rect> frames{frame()};
    for (const auto& child : children_) {
      const auto below = child->allFrames();
      frames.insert(frames.end(), below.begin(), below.end());
    }
    return frames;
  }

  LayoutTree& placed(double width, double height) {
    node_.place({0, 0, width, height});
    return *this;
  }

 private:
  LeafMetrics measured(Proposal proposal) const {
    if (counter_ != nullptr) ++*counter_;
    if (view_.as<SymbolContent>() != nullptr) return {{20, 20}, {}};
    const auto letters = static_cast<double>(view_.as<TextContent>()->string.size());
    const double columns = std::max(1.0, std::floor(proposal.width.value_or(unlimited) / 10));
    return {{std::min(letters, columns) * 10, std::max(1.0, std::ceil(letters / columns)) * 16}, 12};
  }

  int* counter_;
  View view_;
  LayoutNode node_;
  std::vector<std::unique_ptr<LayoutTree>> children_;
};

inline View chart() {
  return lineChart({}, 1);
}

}  // namespace kestrune::ui::test

namespace kestrune::ui {

inline std::ostream& operator<<(std::ostream& out, const Rect& rect) {
  return out << '{' << rect.x << ", " << rect.y << ", " << rect.width << ", " << rect.height << '}';
}
inline std::ostream& operator<<(std::ostream& out, const Size& size) {
  return out << '{' << size.width << ", " << size.height << '}';
}

}  // namespace kestrune::ui
