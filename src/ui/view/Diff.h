#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "ui/view/View.h"

namespace kestrune::ui {

// True if the view can be shown by what shows the other one, changed: the same kind of view and, for a
// component, the same type of component.
bool sameKind(const View& a, const View& b);

// For each of the new views the index of the old one that it continues, absent where it is new; each old view
// is continued at most once. A view with a key continues the one of that key and kind, wherever it stands; a
// view without one continues the one that stands at the same place among those without, if it is of the same
// kind.
std::vector<std::optional<std::size_t>> matchChildren(const std::vector<const View*>& before,
                                                      const std::vector<View>& after);

}  // namespace kestrune::ui
