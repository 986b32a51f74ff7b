#pragma once

#include <QColor>
#include <QPalette>

#include "ui/view/Style.h"

namespace kestrune::ui::qt {

// The colours of the roles for one palette of the desktop. Text stays readable and lines visible on `window`
// and on `controlBackground`, whatever the palette says.
struct ColorScheme {
  bool isDark = false;
  QColor window;
  QColor controlBackground;
  QColor primary;
  // The same with an alpha.
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

// How well one colour is told from another behind it, 1 (not at all) to 21: the WCAG contrast ratio. The
// front colour's alpha counts; the back one is taken as opaque.
double contrast(const QColor& front, const QColor& back);

}  // namespace kestrune::ui::qt
