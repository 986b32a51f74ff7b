#pragma once

#include <cstddef>
#include <optional>

#include <QPoint>

#include "ui/qt/PaintedLeaf.h"

namespace kestrune::ui::qt {

// Lines over a common width. What of a line's thickness reaches past the bounds is cut off. While the pointer
// is over it, the nearest point is marked, and a tooltip says what the chart knows of it.
class LineChartLeaf final : public FillingLeaf {
 public:
  LineChartLeaf(Theme& theme, QWidget* parent);

  bool show(const Content& content, const LeafStyle& style) override;

 protected:
  void paint(QPainter& painter) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void leaveEvent(QEvent* event) override;

 private:
  std::size_t pointCount() const;
  std::optional<std::size_t> pointedAt() const;
  void sayPoint();
  void paintMark(QPainter& painter, std::size_t point) const;

  LineChartContent content_;
  std::optional<QPoint> pointer_;  // while it is over a chart that has something to say
};

}  // namespace kestrune::ui::qt
