#include "ui/view/StackShares.h"

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

// The least flexible first and, among children that take whatever they are offered, those that need most.
// Spacers come last.
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

}  // namespace kestrune::ui
