#pragma once

#include "runtime/Published.h"
#include "ui/view/View.h"

namespace kestrune::ui {

// Marks the view under it while the pointer is over it.
class HoverHighlightModifier final : public Component {
 public:
  Published<bool> hovered{false};

  void setContent(View content) { content_.set(std::move(content)); }
  View body() override;

 private:
  Published<View> content_;
};

// The view with that mark.
View hoverHighlight(View content);

// The view breathes between opacity 0.4 and 1 from its appearance on. Whoever shows it keeps the current one.
struct PulsingOpacity {
  double delay = 0;  // seconds before the first breath

  View body(View content) const;
};

}  // namespace kestrune::ui
