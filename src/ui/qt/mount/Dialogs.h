#pragma once

#include <functional>

#include <QDialog>

#include "ui/view/View.h"

namespace kestrune::ui::qt {

class Theme;

// Opens the dialog for an alert or a file export over the window of `parent`; returns null for other views.
// `current` returns the content at the time that the user answers, or null if the view is gone. The dialog
// deletes itself when it closes. Main thread.
QDialog* openDialog(const Content& content, std::function<const Content*()> current, const Theme& theme,
                    QWidget& parent);

}  // namespace kestrune::ui::qt
