#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "ui/view/View.h"

namespace kestrune::ui {

// True if the widgets of one view can be updated to show the other: the same kind of view and, for a
// component, the same type of component.
bool sameKind(const View& a, const View& b);

// For each new view, the index of the old view that it continues; absent if it is new. Each old view is
// continued at most once. A view with a key continues the old view with that key, at any position; a view
// without a key continues the old view at the same position among views without keys. Both must be of the
// same kind.
std::vector<std::optional<std::size_t>> matchChildren(const std::vector<const View*>& before,
                                                      const std::vector<View>& after);

}  // namespace kestrune::ui
