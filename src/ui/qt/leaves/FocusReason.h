#pragma once

#include <qnamespace.h>

namespace kestrune::ui::qt {

// Whether the focus came by keyboard, so that it should be shown.
inline bool isKeyboardReason(Qt::FocusReason reason) {
  return reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason ||
         reason == Qt::ShortcutFocusReason;
}

}  // namespace kestrune::ui::qt
