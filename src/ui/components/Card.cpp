#include "ui/components/Card.h"

namespace kestrune::ui {

View Card::body() const {
  return View(content).padding(14).background({.fill = ColorRole::controlBackground,
                                               .cornerRadius = 10,
                                               .border = Color(ColorRole::primary, 0.07),
                                               .borderWidth = 0.5,
                                               .shadow = Color(ColorRole::black, 0.06),
                                               .shadowRadius = 4,
                                               .shadowOffsetY = 1});
}

}  // namespace kestrune::ui
