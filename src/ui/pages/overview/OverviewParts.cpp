#include "ui/pages/overview/OverviewParts.h"

#include <utility>

#include "ui/components/Card.h"

namespace kestrune::ui {

View headline(std::string figure) {
  return verbatim(std::move(figure)).withMonospacedDigits(32, FontWeight::semibold);
}

View figure(std::string value) {
  return verbatim(std::move(value)).withMonospacedDigits(14, FontWeight::medium).withLineLimit(1);
}

View gridCard(double spacing, std::vector<View> parts) {
  return Card{vstack(spacing, HorizontalAlignment::leading, std::move(parts)).fillWidth().fillHeight()};
}

}  // namespace kestrune::ui
