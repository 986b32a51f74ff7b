#pragma once

#include <functional>
#include <vector>

#include <QMenu>
#include <QPoint>

#include "ui/view/View.h"

namespace kestrune::ui::qt {

class Theme;

// Opens a menu of `items` over `parent`, at a place on screen. The items are read again when the user
// chooses: an item that has gone by then does nothing. The menu deletes itself when it closes. Main thread.
QMenu* openMenu(std::function<const std::vector<MenuItem>&()> items, Theme& theme, QWidget& parent,
                QPoint place);

}  // namespace kestrune::ui::qt
