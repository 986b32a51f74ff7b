#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include <QPoint>

#include "ui/qt/PaintedLeaf.h"

namespace kestrune::ui::qt {

// Figures of a row of days with a scale at the right and the days below. Days without a figure are gaps.
// While the pointer is over it, the day is marked, and a tooltip says what the chart knows of it.
class DayChartLeaf final : public FillingLeaf {
 public:
  DayChartLeaf(Theme& theme, QWidget* parent);

  bool show(const Content& content, const LeafStyle& style) override;

 protected:
  void paint(QPainter& painter) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void leaveEvent(QEvent* event) override;

 private:
  QRectF plot() const;
  double dayWidth() const;
  double middleOf(std::size_t day) const;
  double heightOf(double figure) const;
  std::optional<std::size_t> pointedAt() const;
  void sayDay();
  void paintScale(QPainter& painter);
  void paintDays(QPainter& painter);
  void paintMark(QPainter& painter, std::size_t day) const;
  void paintSeries(QPainter& painter, const DayChartContent::Series& series,
                   std::vector<double>& stacked) const;
  void paintRun(QPainter& painter, const DayChartContent::Series& series, std::size_t first,
                std::size_t last) const;

  DayChartContent content_;
  std::vector<double> scale_;      // where its lines lie, from 0 up
  double scaleWidth_ = 0;          // of its widest text
  std::optional<QPoint> pointer_;  // while it is over the chart
};

// Round figures from 0 to at least `highest`, at least two and in at most five steps. A step is `unit` times
// 1, 2 or 5 and a power of ten, and no less than `unit`.
std::vector<double> roundScale(double highest, double unit);

}  // namespace kestrune::ui::qt
