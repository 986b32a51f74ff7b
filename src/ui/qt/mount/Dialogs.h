#pragma once

#include <functional>

#include <QDialog>

#include "ui/view/View.h"

namespace kestrune::ui::qt {

class Theme;

// Opens the dialog that an alert or a file export stands for, over the window of `parent`; null for other
// views. `current` yields the view as it is by the time that the user answers, or null once it has gone. The
// dialog deletes itself when it closes. Main thread.
QDialog* openDialog(const Content& content, std::function<const Content*()> current, const Theme& theme,
                    QWidget& parent);

}  // namespace kestrune::ui::qt
