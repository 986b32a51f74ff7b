#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "ui/qt/charts/ChartLeaf.h"

namespace kestrune::ui::qt {

// Figures of a row of days with a scale at the right and the days below. Days without a figure are gaps. The
// pointer marks the day.
class DayChartLeaf final : public ChartLeaf {
 public:
  DayChartLeaf(Theme& theme, QWidget* parent);

  bool show(const Content& content, const LeafStyle& style) override;

 protected:
  void paint(QPainter& painter) override;
  std::optional<std::size_t> pointedAt() const override;

 private:
  QRectF plot() const;
  double dayWidth() const;
  double middleOf(std::size_t day) const;
  double heightOf(double figure) const;
  void paintScale(QPainter& painter);
  void paintDays(QPainter& painter);
  void paintMark(QPainter& painter, std::size_t day) const;
  void paintSeries(QPainter& painter, const DayChartContent::Series& series,
                   std::vector<double>& stacked) const;
  void paintRun(QPainter& painter, const DayChartContent::Series& series, std::size_t first,
                std::size_t last) const;

  DayChartContent content_;
  std::vector<double> scale_;  // where its lines lie, from 0 up
  double scaleWidth_ = 0;      // of its widest text
};

// Round figures from 0 to at least `highest`, at least two and in at most five steps. A step is `unit` times
// 1, 2 or 5 and a power of ten, and no less than `unit`.
std::vector<double> roundScale(double highest, double unit);

}  // namespace kestrune::ui::qt
