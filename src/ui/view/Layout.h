#pragma once

#include <cstdint>
#include <optional>

// The words in which views and their parents agree on sizes: a parent proposes a size to a child, the child
// chooses its own, the parent places it.
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

// The size that a view takes for a proposal, and how far below its top the first line of text stands; without
// text its bottom counts.
struct LeafMetrics {
  Size size;
  std::optional<double> baseline;
};

// The ideal length of what has no size of its own, such as a chart or a divider.
inline constexpr double defaultIdealLength = 10;

// The direction of a row or a column; the functions let both share their arithmetic.
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
