#pragma once

namespace kestrune::ui::qt {

// Makes assistive tools see leaves as what they show. Before the first leaf is asked about; again does no
// harm.
void installLeafAccessibility();

}  // namespace kestrune::ui::qt
