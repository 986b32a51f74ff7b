#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "ui/qt/charts/ChartLeaf.h"

namespace kestrune::ui::qt {

// Figures of consecutive days, with a scale on the right and the days below. A day without a figure leaves a
// gap. The pointer marks a day.
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
  // The figures at the scale's lines, from 0 up.
  std::vector<double> scale_;
  // The width of its widest label.
  double scaleWidth_ = 0;
};

// Round figures from 0 to at least `highest`, in one to five equal steps. A step is `unit` times 1, 2 or 5
// times a power of ten, and at least `unit`.
std::vector<double> roundScale(double highest, double unit);

}  // namespace kestrune::ui::qt
