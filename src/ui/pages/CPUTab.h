#pragma once

#include <array>
#include <cstdint>

#include "runtime/Published.h"
#include "ui/components/CoreBar.h"
#include "ui/components/Trends.h"
#include "ui/components/ViewContext.h"
#include "ui/view/View.h"

namespace kestrune::ui {

// How far back the chart of the CPU tab reaches.
enum class CPUTimeRange : std::uint8_t { s60, m5, m10, h1, h12, h24 };

// By raw value.
inline constexpr std::array<TimeRangeChoice, 6> cpuTimeRanges{{
    {"60s", 60},
    {"5m", 300},
    {"10m", 600},
    {"1h", 3600},
    {"12h", 43200},
    {"24h", 86400},
}};

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
