#pragma once

#include "runtime/Published.h"
#include "ui/view/View.h"

namespace kestrune::ui {

// Highlights its content while the pointer is over it.
class HoverHighlightModifier final : public Component {
 public:
  Published<bool> hovered{false};

  void setContent(View content) { content_.set(std::move(content)); }
  View body() override;

 private:
  Published<View> content_;
};

// The view with that highlight.
View hoverHighlight(View content);

// The view pulses between opacity 0.4 and 1 from its appearance on. The caller keeps the current value.
struct PulsingOpacity {
  double delay = 0;  // seconds before the first breath

  View body(View content) const;
};

}  // namespace kestrune::ui
