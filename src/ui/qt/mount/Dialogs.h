#pragma once

#include <functional>
#include <vector>

#include <QDialog>
#include <QMenu>
#include <QPoint>

#include "ui/view/View.h"

namespace kestrune::ui::qt {

class Theme;

// Opens the dialog for an alert or a file export over the window of `parent`; returns null for other views.
// `current` returns the content at the time that the user answers, or null if the view is gone. The dialog
// deletes itself when it closes. Main thread.
QDialog* openDialog(const Content& content, std::function<const Content*()> current, const Theme& theme,
                    QWidget& parent);

// Opens a menu of `items` over `parent`, at a place on screen. The items are read again when the user
// chooses: an item that no longer exists does nothing. The menu deletes itself when it closes. Main thread.
QMenu* openMenu(std::function<const std::vector<MenuItem>&()> items, Theme& theme, QWidget& parent,
                QPoint place);

}  // namespace kestrune::ui::qt
