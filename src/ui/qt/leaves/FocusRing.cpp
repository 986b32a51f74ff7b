#include "ui/qt/leaves/FocusRing.h"

#include <QPainter>

#include "ui/qt/theme/Theme.h"

namespace kestrune::ui::qt {

bool isKeyboardReason(Qt::FocusReason reason) {
  return reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason ||
         reason == Qt::ShortcutFocusReason;
}

void paintFocusRing(QPainter& painter, const Theme& theme, const QRectF& bounds, double radius,
                    double opacity) {
  constexpr double thickness = 2;
  constexpr double inset = thickness / 2;
  painter.setPen(QPen(theme.color(Color(ColorRole::accent, 0.9), opacity), thickness));
  painter.setBrush(Qt::NoBrush);
  painter.drawRoundedRect(bounds.adjusted(inset, inset, -inset, -inset), radius, radius);
}

}  // namespace kestrune::ui::qt
