#pragma once

#include <functional>

#include <QWidget>

namespace kestrune::ui::qt {

// Moves a widget in from below while it fades in, or out the same way. What moves is a picture of the widget:
// a sibling that takes no focus and deletes itself at the end. Nothing moves if the desktop asks for reduced
// motion or the widget can't be seen.

// Hides the widget; `finished` must show it again. Returns the picture, or null if nothing moves. Deleting
// the picture drops `finished`.
QWidget* playEntrance(QWidget& widget, std::function<void()> finished);
void playExit(QWidget& widget);

}  // namespace kestrune::ui::qt
