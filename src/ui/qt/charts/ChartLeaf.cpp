#include "ui/qt/charts/ChartLeaf.h"

#include <utility>

#include <QMouseEvent>
#include <QToolTip>

#include "ui/qt/leaves/ToolTip.h"
#include "ui/qt/theme/Theme.h"

namespace kestrune::ui::qt {

ChartLeaf::ChartLeaf(Theme& theme, QWidget* parent) : Leaf(theme, parent, QAccessible::Graphic) {}

void ChartLeaf::setReadOut(ReadOut readOut) {
  readOut_ = std::move(readOut);
  setMouseTracking(readOut_ != nullptr);
  if (!readOut_) pointer_.reset();
}

void ChartLeaf::refreshReadOut() {
  if (pointer_ && QToolTip::isVisible()) showReadOut();
}

void ChartLeaf::mouseMoveEvent(QMouseEvent* event) {
  event->ignore();
  if (!readOut_) return;
  const auto before = pointedAt();
  pointer_ = event->position().toPoint();
  if (pointedAt() == before) return;
  update();
  showReadOut();
}

void ChartLeaf::leaveEvent(QEvent* event) {
  if (pointer_) {
    pointer_.reset();
    update();
    QToolTip::hideText();
  }
  Leaf::leaveEvent(event);
}

void ChartLeaf::showReadOut() {
  const auto point = pointedAt();
  QString text;
  if (point) {
    for (const TextContent& part : readOut_(*point)) text += theme().text(part);
  }
  if (text.isEmpty()) {
    QToolTip::hideText();
  } else {
    QToolTip::showText(mapToGlobal(*pointer_), plainToolTip(text), this);
  }
}

}  // namespace kestrune::ui::qt
