#pragma once

#include <cstddef>
#include <optional>

#include "ui/view/Arrangement.h"
#include "ui/view/Layout.h"

namespace kestrune::ui {

// The children of the node that is being arranged, by their index.
class Children {
 public:
  virtual std::size_t count() const = 0;
  // An empty child takes up no space, not even the spacing beside it.
  virtual bool isEmpty(std::size_t child) const = 0;
  virtual const Arrangement& arrangement(std::size_t child) const = 0;
  virtual LeafMetrics metrics(std::size_t child, const Proposal& proposal) const = 0;

 protected:
  ~Children() = default;
};

// A child in its place.
struct PlacedChild {
  std::size_t child = 0;
  Proposal proposal;  // what it is offered
  Rect rect;          // the size that it chose for that, and where it stands in the node
  std::optional<double> baseline;
};

// The child with the size that it chooses, at the origin.
inline PlacedChild offer(const Children& children, std::size_t child, const Proposal& proposal) {
  const LeafMetrics metrics = children.metrics(child, proposal);
  return {child, proposal, {0, 0, metrics.size.width, metrics.size.height}, metrics.baseline};
}

}  // namespace kestrune::ui
