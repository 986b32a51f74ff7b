#pragma once

#include <cstdint>
#include <optional>

#include "ui/view/Layout.h"

// Lengths and positions along one of the two directions, so that rows and columns share their arithmetic.
namespace kestrune::ui {

enum class Axis : std::uint8_t { horizontal, vertical };

inline Axis across(Axis along) {
  return along == Axis::horizontal ? Axis::vertical : Axis::horizontal;
}
inline double length(const Size& size, Axis axis) {
  return axis == Axis::horizontal ? size.width : size.height;
}
inline double length(const Rect& rect, Axis axis) {
  return axis == Axis::horizontal ? rect.width : rect.height;
}
inline const std::optional<double>& length(const Proposal& proposal, Axis axis) {
  return axis == Axis::horizontal ? proposal.width : proposal.height;
}
inline double& position(Rect& rect, Axis axis) {
  return axis == Axis::horizontal ? rect.x : rect.y;
}
inline Proposal withLength(Proposal proposal, Axis axis, double length) {
  (axis == Axis::horizontal ? proposal.width : proposal.height) = length;
  return proposal;
}
inline Size sizeAlong(Axis along, double length, double thickness) {
  return along == Axis::horizontal ? Size{length, thickness} : Size{thickness, length};
}

}  // namespace kestrune::ui
