#include "ui/PlaceholderTab.h"

#include <string>

#include "ui/ViewList.h"

namespace kestrune::ui {

View PlaceholderTab::body() const {
  const Extent filling{.fixed = {}, .min = {}, .max = unlimited};
  return vstack(8, HorizontalAlignment::center,
                views(symbol(std::string(symbolName(tab))).withFont(32).withForeground(ColorRole::tertiary),
                      text(std::string(title(tab))).withFont(15, FontWeight::semibold),
                      text("This page is not here yet.").withForeground(ColorRole::secondary)))
      .frame(filling, filling);
}

}  // namespace kestrune::ui
