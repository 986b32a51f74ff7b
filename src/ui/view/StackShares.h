#pragma once

#include <vector>

#include "ui/view/Axis.h"
#include "ui/view/Children.h"

namespace kestrune::ui {

// Shares out the length that a stack is offered among its children and offers each its share; all at the
// origin. Without an offered length each child takes its ideal one. Empty children are missing in the result.
std::vector<PlacedChild> shareOut(const Children& children, const Proposal& offered, Axis along,
                                  double spacing);

}  // namespace kestrune::ui
