#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "runtime/Published.h"
#include "ui/components/ViewContext.h"
#include "ui/pages/StatsExport.h"
#include "ui/view/View.h"

namespace kestrune::ui {

enum class StatsRange : std::uint8_t { week, month, quarter };

// "7 days", "30 days" or "90 days"; localizable.
const char* label(StatsRange range);
int dayCount(StatsRange range);

// The page about the last days: summary figures, four charts and their export. Past days are read from their
// files when the page appears and when the range changes; today's figures are those of the same moment.
class StatsTab final : public Component {
 public:
  explicit StatsTab(const ViewContext& context);

  Published<StatsRange> range{StatsRange::week};
  Published<bool> isLoading{false};
  Published<bool> isExporting{false};

  View body() override;
  // Shows another range.
  void select(StatsRange wanted);
  // The export of what is loaded.
  std::string csv() const;

 private:
  // One figure of each day of the range, oldest first; a day without a record is a gap.
  using Figures = std::vector<std::optional<double>>;

  struct NamedFigure {
    const char* name;  // localizable
    double DayStats::*figure;
  };

  // The mean and the peak of a metric on each day.
  struct Load {
    double DayStats::*average;
    double DayStats::*peak;
    double scaleUnit;
    std::function<std::string(double)> text;
  };

  void loadSoon();
  void load();
  Figures figures(double DayStats::*figure) const;
  double mean(double DayStats::*figure) const;
  double highest(double DayStats::*figure) const;
  double sum(double DayStats::*figure) const;
  std::vector<TextContent> axisDays() const;
  // "May 9, 2026", for a day of the range.
  std::string dayTitle(std::size_t day) const;
  View titleRow();
  View loadingState() const;
  View emptyState() const;
  View summary() const;
  View cpuCard() const;
  View memoryCard() const;
  View loadCard(std::string title, std::string symbolName, ColorRole color, const Load& load,
                TextContent spoken) const;
  View networkCard() const;
  View diskCard() const;
  // Bars of one figure with those of another on top.
  View dataCard(std::string title, std::string symbolName, std::string spoken, const NamedFigure& lower,
                const NamedFigure& upper) const;
  std::string percent(double percentage) const;

  ViewContext context_;
  std::vector<DayStats> stats_;               // oldest first
  std::vector<DailySummary> dailySummaries_;  // of the same days
  std::vector<Date> days_;                    // all days of the range, oldest first
  // The index of each of those days in `stats_`.
  std::vector<std::optional<std::size_t>> statsOfDay_;
  std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
};

}  // namespace kestrune::ui
