#pragma once

#include "ui/qt/charts/ChartLeaf.h"

namespace kestrune::ui::qt {

// Lines over a common width, with their full thickness within the height. The pointer marks the nearest
// point.
class LineChartLeaf final : public ChartLeaf {
 public:
  LineChartLeaf(Theme& theme, QWidget* parent);

  bool show(const Content& content, const LeafStyle& style) override;

 protected:
  void paint(QPainter& painter) override;
  std::optional<std::size_t> pointedAt() const override;

 private:
  std::size_t pointCount() const;
  void paintMark(QPainter& painter, std::size_t point) const;

  LineChartContent content_;
};

}  // namespace kestrune::ui::qt
