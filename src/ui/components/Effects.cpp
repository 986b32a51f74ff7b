#include "ui/components/Effects.h"

namespace kestrune::ui {

View HoverHighlightModifier::body() {
  const Color fill = hovered.get() ? Color(ColorRole::accent, 0.15) : Color(ColorRole::clear);
  return View(content_.get()).background({.fill = fill}).onHover([this](bool inside) {
    hovered.set(inside);
  });
}

View hoverHighlight(View content) {
  return component<HoverHighlightModifier>(
      [] { return std::make_shared<HoverHighlightModifier>(); },
      [content = std::move(content)](HoverHighlightModifier& modifier) { modifier.setContent(content); });
}

View PulsingOpacity::body(View content) const {
  return std::move(content).pulse({.from = 0.4, .to = 1.0, .seconds = 0.85, .delay = delay});
}

}  // namespace kestrune::ui
