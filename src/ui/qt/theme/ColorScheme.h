#pragma once

#include <QColor>
#include <QPalette>

#include "ui/view/Style.h"

namespace kestrune::ui::qt {

// The colours of the roles for one palette of the desktop. Whatever the palette, text is readable and lines
// are visible on `window` and on `controlBackground`.
struct ColorScheme {
  bool isDark = false;
  QColor window;
  QColor controlBackground;
  QColor primary;
  // `primary` with an alpha.
  QColor secondary;
  QColor tertiary;
  QColor quaternary;
  QColor accent;
  QColor orange;
  QColor red;
  QColor green;
  QColor purple;

  // Invalid for `rgb`.
  QColor of(ColorRole role) const;
  friend bool operator==(const ColorScheme&, const ColorScheme&) = default;
};

ColorScheme colorSchemeFor(const QPalette& palette);

// `share` 0 yields `from`, 1 yields `to`; alpha is mixed as well.
QColor mixed(const QColor& from, const QColor& to, double share);

// The WCAG contrast ratio, 1 (equal) to 21. The alpha of `front` counts; `back` is treated as opaque.
double contrast(const QColor& front, const QColor& back);

}  // namespace kestrune::ui::qt
