#include "ui/components/Gauges.h"

#include "ui/components/Fraction.h"

namespace kestrune::ui {

View ThinBar::body() const {
  return View(BarContent{.fraction = clampedFraction(fraction),
                         .track = Color(ColorRole::primary, 0.06),
                         .fill = color.withOpacity(0.85),
                         .cornerRadius = 3,
                         .animationSeconds = 0.4})
      .height(5);
}

View shareBar(double fraction, Color fill, double height) {
  return View(BarContent{.fraction = clampedFraction(fraction),
                         .track = Color(ColorRole::primary, 0.06),
                         .fill = fill,
                         .cornerRadius = 3,
                         .animationSeconds = 0})
      .height(height);
}

View DonutRing::body() const {
  return View(RingContent{.fraction = clampedFraction(fraction),
                          .lineWidth = lineWidth,
                          .track = Color(ColorRole::primary, 0.07),
                          .arc = color,
                          .animationSeconds = 0.5});
}

}  // namespace kestrune::ui
