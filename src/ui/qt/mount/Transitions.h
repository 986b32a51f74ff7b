#pragma once

#include <functional>

#include <QWidget>

namespace kestrune::ui::qt {

// A widget that has just been put in its place comes in from below, fading in; one that is about to go leaves
// the same way. What moves is a picture of the widget, a sibling that deletes itself in the end, so that
// focus doesn't know of it. Nothing moves where the desktop asks for no animations, or where the widget can't
// be seen.

// Hides the widget, which is to be shown again when `finished` is called. Returns the picture; nothing:
// nothing moves. With the picture `finished` goes too.
QWidget* playEntrance(QWidget& widget, std::function<void()> finished);
void playExit(QWidget& widget);

}  // namespace kestrune::ui::qt
