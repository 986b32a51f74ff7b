#pragma once

#include <optional>
#include <string>

#include "history/DailySummary.h"
#include "runtime/Published.h"
#include "ui/components/ViewContext.h"
#include "ui/view/View.h"

namespace kestrune::ui {

// The first page: one card for each subsystem, as it is now or as it was on a past day.
class OverviewTab final : public Component {
 public:
  explicit OverviewTab(const ViewContext& context) : context_(context) {}

  // The network that a past day's traffic is narrowed to; absent: all networks. Reset when another day is
  // shown.
  Published<std::optional<std::string>> selectedOverviewSSID;

  View body() override;

 private:
  const AppEnvironment& env() const { return context_.env; }
  bool isHistoric() const { return env().selectedDate.get().has_value(); }
  void forgetFilterOnAnotherDay();
  std::string dateLabel() const;
  View dateStrip();
  View emptyState() const;
  View cpuCard() const;
  ReadOut hourlyReadOut(const DailySummary& record) const;
  View memoryCard() const;
  View batteryCard() const;
  View networkCard();
  View audioSection() const;
  View topProcesses() const;

  ViewContext context_;
  std::optional<DailySummary> record_;  // of the past day that is shown
  std::optional<Date> shownDate_;
};

}  // namespace kestrune::ui
