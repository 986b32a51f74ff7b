#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>

#include "history/DailySummary.h"
#include "runtime/Published.h"
#include "ui/components/Trends.h"
#include "ui/components/ViewContext.h"
#include "ui/view/View.h"

namespace kestrune::ui {

// How far back the chart of the network tab reaches.
enum class NetTimeRange : std::uint8_t { s60, m5, h1, h12, h24 };

// By raw value; a sample a second.
inline constexpr std::array<TimeRangeChoice, 5> netTimeRanges{{
    {"60s", 60},
    {"5m", 300},
    {"1h", 3600},
    {"12h", 43200},
    {"24h", 86400},
}};

// The page about the network: rates now and over time, the connection, today's traffic by network, and the
// interfaces.
class NetworkTab final : public Component {
 public:
  explicit NetworkTab(const ViewContext& context) : context_(context) {}

  Published<NetTimeRange> timeRange{NetTimeRange::s60};
  Published<std::optional<std::string>> selectedSSID;  // absent: all networks

  View body() override;

 private:
  const NetworkProvider& network() const { return *context_.env.network; }
  View rateCard(std::string title, std::string symbolName, double NetworkSnapshot::*rate) const;
  View connectionCard() const;
  View networksCard();
  View networkSelector(const SSIDTraffic& networks);
  View historyCard();
  View interfacesCard() const;

  ViewContext context_;
};

}  // namespace kestrune::ui
