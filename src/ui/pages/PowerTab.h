#pragma once

#include <cstdint>
#include <vector>

#include "ui/components/ViewContext.h"
#include "ui/view/View.h"

namespace kestrune::ui {

// The page about the battery: charge, power, electrical figures, health, and the history of charge and
// health. Without a battery it shows the provider's initial values.
class PowerTab final : public Component {
 public:
  // Reads the last week's day files.
  explicit PowerTab(const ViewContext& context);

  View body() override;

 private:
  const BatterySnapshot& battery() const { return *context_.env.battery->current; }
  View batteryCard() const;
  View sourceCard() const;
  View electricalCard() const;
  View healthCard() const;
  View healthTrend() const;
  View chargeHistory() const;

  ViewContext context_;
  std::vector<std::int64_t> healthPercents_;  // of the last week's days that have one, oldest first
};

}  // namespace kestrune::ui
