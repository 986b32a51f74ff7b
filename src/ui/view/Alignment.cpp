#include "ui/view/Alignment.h"

#include <algorithm>

namespace kestrune::ui {
namespace {

// A length on both sides of the line that an alignment brings together.
struct Sides {
  double before = 0;
  double after = 0;

  void widenTo(const Sides& other) {
    before = std::max(before, other.before);
    after = std::max(after, other.after);
  }
};

Sides sides(HorizontalAlignment alignment, const PlacedChild& item) {
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

Sides sides(VerticalAlignment alignment, const PlacedChild& item) {
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

template <class Alignment>
double align(std::vector<PlacedChild>& items, Axis axis, Alignment alignment) {
  Sides all;
  for (const auto& item : items) all.widenTo(sides(alignment, item));
  for (auto& item : items) position(item.rect, axis) = all.before - sides(alignment, item).before;
  return all.before + all.after;
}

double startWithin(double width, const Sides& child, HorizontalAlignment alignment) {
  if (alignment == HorizontalAlignment::leading) return 0;
  return alignment == HorizontalAlignment::center ? width / 2 - child.before : width - child.before;
}

double startWithin(double height, const Sides& child, VerticalAlignment alignment) {
  if (alignment == VerticalAlignment::center) return height / 2 - child.before;
  return alignment == VerticalAlignment::bottom ? height - child.before : 0;
}

}  // namespace

double alignHorizontally(std::vector<PlacedChild>& items, HorizontalAlignment alignment) {
  return align(items, Axis::horizontal, alignment);
}

double alignVertically(std::vector<PlacedChild>& items, VerticalAlignment alignment) {
  return align(items, Axis::vertical, alignment);
}

double lineUp(std::vector<PlacedChild>& items, Axis axis, double spacing) {
  double end = 0;
  for (auto& item : items) {
    if (&item != &items.front()) end += spacing;
    position(item.rect, axis) = end;
    end += length(item.rect, axis);
  }
  return std::max(0.0, end);
}

void alignWithin(const Size& box, PlacedChild& item, const Alignment& alignment) {
  item.rect.x = startWithin(box.width, sides(alignment.horizontal, item), alignment.horizontal);
  item.rect.y = startWithin(box.height, sides(alignment.vertical, item), alignment.vertical);
}

}  // namespace kestrune::ui
