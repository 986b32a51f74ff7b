#pragma once

#include <array>
#include <cstdint>

#include "runtime/Published.h"
#include "ui/components/Trends.h"
#include "ui/components/ViewContext.h"
#include "ui/view/View.h"

namespace kestrune::ui {

// How far back the chart of the memory tab reaches.
enum class MemTimeRange : std::uint8_t { m5, m10, h1, h12, h24 };

// By raw value; a sample every two seconds.
inline constexpr std::array<TimeRangeChoice, 5> memTimeRanges{{
    {"5m", 150},
    {"10m", 300},
    {"1h", 1800},
    {"12h", 21600},
    {"24h", 43200},
}};

// The page about the memory: how much is used, for what, over time, and by which processes.
class MemoryTab final : public Component {
 public:
  explicit MemoryTab(const ViewContext& context) : context_(context) {}

  Published<MemTimeRange> timeRange{MemTimeRange::m5};

  View body() override;

 private:
  const MemoryProvider& memory() const { return *context_.env.memory; }
  View usedCard() const;
  View pressureCard() const;
  View breakdown() const;
  View usageHistory();
  View topProcesses() const;

  ViewContext context_;
};

}  // namespace kestrune::ui
