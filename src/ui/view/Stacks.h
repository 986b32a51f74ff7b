#pragma once

#include <vector>

#include "ui/view/Children.h"
#include "ui/view/Layout.h"
#include "ui/view/Style.h"

namespace kestrune::ui {

// Shares out the length that a stack is offered among its children and offers each its share; all at the
// origin. Without an offered length each child takes its ideal one. Empty children are missing in the result.
std::vector<PlacedChild> shareOut(const Children& children, const Proposal& offered, Axis along,
                                  double spacing);

// Aligns the items with each other in one dimension; returns the length that they take together.
double alignHorizontally(std::vector<PlacedChild>& items, HorizontalAlignment alignment);
double alignVertically(std::vector<PlacedChild>& items, VerticalAlignment alignment);

// Puts the items one behind the other; returns the length that they take together.
double lineUp(std::vector<PlacedChild>& items, Axis axis, double spacing);

// Aligns one item in a box of that size. It may reach past the box.
void alignWithin(const Size& box, PlacedChild& item, const Alignment& alignment);

}  // namespace kestrune::ui
