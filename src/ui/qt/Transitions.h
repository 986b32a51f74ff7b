#pragma once

#include <functional>
#include <memory>

#include <QVariantAnimation>
#include <QWidget>

#include "ui/view/View.h"

namespace kestrune::ui::qt {

// A widget that has just been put in its place comes in from below, fading in; one that is about to go leaves
// the same way. What moves is a picture of the widget, so that neither layout nor focus know of it. Nothing
// moves where the desktop asks for no animations, or where the widget can't be seen.
void playEntrance(QWidget& widget);
void playExit(QWidget& widget);

// Calls `apply` with the opacity of a breathing view for as long as the animation lives.
std::unique_ptr<QVariantAnimation> makePulse(const Pulse& pulse, std::function<void(double opacity)> apply);

}  // namespace kestrune::ui::qt
