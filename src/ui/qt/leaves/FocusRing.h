#pragma once

#include <qnamespace.h>

class QPainter;
class QRectF;

namespace kestrune::ui::qt {

class Theme;

// True if the focus came by keyboard and should be shown.
bool isKeyboardReason(Qt::FocusReason reason);

// Draws the ring just within the bounds; `radius` is that of its corners.
void paintFocusRing(QPainter& painter, const Theme& theme, const QRectF& bounds, double radius,
                    double opacity = 1);

}  // namespace kestrune::ui::qt
