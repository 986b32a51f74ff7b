#pragma once

#include <cstddef>
#include <optional>

#include <QPoint>

#include "ui/qt/leaves/Leaf.h"

namespace kestrune::ui::qt {

// What charts have in common: a chart with a read-out marks the point under the pointer and describes it in a
// tooltip.
class ChartLeaf : public Leaf {
 protected:
  ChartLeaf(Theme& theme, QWidget* parent);

  // The pointer's position in the leaf, if it is over it.
  const std::optional<QPoint>& pointer() const { return pointer_; }
  // The index of the point under the pointer, if there is one.
  virtual std::optional<std::size_t> pointedAt() const = 0;
  // Replaces the read-out. Without one the pointer isn't tracked.
  void setReadOut(ReadOut readOut);
  // Updates the tooltip if it is showing.
  void refreshReadOut();

  void mouseMoveEvent(QMouseEvent* event) override;
  void leaveEvent(QEvent* event) override;

 private:
  void showReadOut();

  ReadOut readOut_;
  std::optional<QPoint> pointer_;
};

}  // namespace kestrune::ui::qt
