#include "ui/view/Stacks.h"

#include <algorithm>

namespace kestrune::ui {
namespace {

// A child that is waiting for its share.
struct Candidate {
  std::size_t child = 0;
  std::size_t place = 0;  // in the stack, empty children aside
  bool isSpacer = false;
  double minLength = 0;
  double flexibility = 0;  // from the smallest length to the largest
};

std::vector<std::size_t> withoutEmpty(const Children& children) {
  std::vector<std::size_t> present;
  present.reserve(children.count());
  for (std::size_t child = 0; child < children.count(); ++child) {
    if (!children.isEmpty(child)) present.push_back(child);
  }
  return present;
}

double chosenLength(const Children& children, std::size_t child, Axis along, double offered) {
  // Asked without regard to the other dimension, so that deep trees don't ask for every combination.
  return length(children.metrics(child, withLength({}, along, offered)).size, along);
}

Candidate candidate(const Children& children, std::size_t child, Axis along, bool orderMatters) {
  Candidate result{.child = child};
  if (const auto* spacer = std::get_if<SpacerContent>(&children.arrangement(child))) {
    result.isSpacer = true;
    result.minLength = std::max(0.0, spacer->minLength);
  } else if (orderMatters) {
    result.minLength = chosenLength(children, child, along, 0);
    result.flexibility = chosenLength(children, child, along, unlimited) - result.minLength;
  }
  return result;
}

// The least flexible first. Children that take any size offered come in order of their minimum, largest
// first. Spacers come last.
bool comesFirst(const Candidate& a, const Candidate& b) {
  if (a.isSpacer != b.isSpacer) return b.isSpacer;
  return a.flexibility != b.flexibility ? a.flexibility < b.flexibility : a.minLength > b.minLength;
}

std::vector<Candidate> inOrder(const Children& children, const std::vector<std::size_t>& present, Axis along,
                               double length) {
  const bool orderMatters = present.size() > 1 && length > 0 && length < unlimited;
  std::vector<Candidate> order;
  order.reserve(present.size());
  for (const std::size_t child : present) {
    order.push_back(candidate(children, child, along, orderMatters));
    order.back().place = order.size() - 1;
  }
  std::ranges::stable_sort(order, comesFirst);
  return order;
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

// Each child is offered an equal share of what is left; the part that it doesn't use goes to the children
// after it. So the children that can adapt least come first. Spacers take only what nothing else wants,
// beyond their minimum.
std::vector<PlacedChild> shareOut(const Children& children, const Proposal& offered, Axis along,
                                  double spacing) {
  const std::vector<std::size_t> present = withoutEmpty(children);
  std::vector<PlacedChild> items(present.size());
  if (present.empty()) return items;
  const auto& whole = length(offered, along);
  if (!whole) {
    std::ranges::transform(present, items.begin(),
                           [&](std::size_t child) { return offer(children, child, offered); });
    return items;
  }

  const double gaps = spacing * static_cast<double>(present.size() - 1);
  double left = std::max(0.0, *whole - gaps);
  const std::vector<Candidate> order = inOrder(children, present, along, left);
  double keptForSpacers = 0;
  double spacers = 0;
  for (const Candidate& each : order) {
    if (!each.isSpacer) continue;
    keptForSpacers += each.minLength;
    spacers += 1;
  }

  double others = static_cast<double>(order.size()) - spacers;
  for (const Candidate& next : order) {
    double& sharing = next.isSpacer ? spacers : others;
    const double kept = next.isSpacer ? 0 : keptForSpacers;
    const double share = std::max(0.0, left - kept) / sharing;
    sharing -= 1;
    PlacedChild& item = items[next.place];
    item = offer(children, next.child, withLength(offered, along, share));
    if (left < unlimited) left = std::max(0.0, left - length(item.rect, along));
  }
  return items;
}

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
