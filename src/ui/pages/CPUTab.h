#pragma once

#include "runtime/Published.h"
#include "ui/components/CoreBar.h"
#include "ui/components/ViewContext.h"
#include "ui/pages/CPUTimeRange.h"
#include "ui/view/View.h"

namespace kestrune::ui {

// The page about the processors: the load now and over time, the chip, each core, the busiest processes.
class CPUTab final : public Component {
 public:
  explicit CPUTab(const ViewContext& context) : context_(context) {}

  Published<CPUTimeRange> timeRange{CPUTimeRange::s60};

  View body() override;

 private:
  const CPUProvider& cpu() const { return *context_.env.cpu; }
  View usageCard() const;
  View chipCard() const;
  View perCore() const;
  ReadOut coreReadOut(const CoreBar& bar, const HistoryRing<CPUSnapshot>& history) const;
  View usageHistory();
  View topProcesses() const;
  View processTable() const;
  View processRow(const CPUSnapshot::ProcessInfo& process) const;

  ViewContext context_;
};

}  // namespace kestrune::ui
