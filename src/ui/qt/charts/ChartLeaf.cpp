#include "ui/qt/charts/ChartLeaf.h"

#include <utility>

#include <QMouseEvent>
#include <QToolTip>

#include "ui/qt/leaves/ToolTip.h"
#include "ui/qt/theme/Theme.h"

namespace kestrune::ui::qt {

ChartLeaf::ChartLeaf(Theme& theme, QWidget* parent) : FillingLeaf(theme, parent, QAccessible::Graphic) {}

void ChartLeaf::setReadOut(ReadOut readOut) {
  readOut_ = std::move(readOut);
  setMouseTracking(readOut_ != nullptr);
  if (!readOut_) pointer_.reset();
}

void ChartLeaf::refreshReadOut() {
  if (pointer_ && QToolTip::isVisible()) say();
}

void ChartLeaf::mouseMoveEvent(QMouseEvent* event) {
  event->ignore();
  if (!readOut_) return;
  const auto before = pointedAt();
  pointer_ = event->position().toPoint();
  if (pointedAt() == before) return;
  update();
  say();
}

void ChartLeaf::leaveEvent(QEvent* event) {
  if (pointer_) {
    pointer_.reset();
    update();
    QToolTip::hideText();
  }
  FillingLeaf::leaveEvent(event);
}

void ChartLeaf::say() {
  const auto place = pointedAt();
  QString said;
  if (place) {
    for (const TextContent& part : readOut_(*place)) said += theme().text(part);
  }
  if (said.isEmpty()) {
    QToolTip::hideText();
  } else {
    QToolTip::showText(mapToGlobal(*pointer_), plainToolTip(said), this);
  }
}

}  // namespace kestrune::ui::qt
