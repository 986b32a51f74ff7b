#pragma once

#include <cstddef>
#include <optional>

#include <QPoint>

#include "ui/qt/leaves/PaintedLeaf.h"

namespace kestrune::ui::qt {

// What charts have in common: while the pointer is over one that has something to say, the place under it is
// marked, and a tooltip says what the chart knows of it.
class ChartLeaf : public FillingLeaf {
 protected:
  ChartLeaf(Theme& theme, QWidget* parent);

  // Where the pointer is, in the leaf; none while it is elsewhere.
  const std::optional<QPoint>& pointer() const { return pointer_; }
  // The number of the place under the pointer, if there is one.
  virtual std::optional<std::size_t> pointedAt() const = 0;
  // Takes what is to be said from now on. Where nothing is, the pointer is no longer followed.
  void setReadOut(ReadOut readOut);
  // Says it anew where it is being said; the figures have changed.
  void refreshReadOut();

  void mouseMoveEvent(QMouseEvent* event) override;
  void leaveEvent(QEvent* event) override;

 private:
  void say();

  ReadOut readOut_;
  std::optional<QPoint> pointer_;
};

}  // namespace kestrune::ui::qt
