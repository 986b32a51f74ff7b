#pragma once

namespace kestrune::ui::qt {

// Makes assistive tools see leaves as what they show. Call it before the first query; repeated calls are
// harmless.
void installLeafAccessibility();

}  // namespace kestrune::ui::qt
