#include "ui/qt/theme/DesktopPalette.h"

#include <QApplication>
#include <QStyle>

#include "ui/qt/theme/ColorScheme.h"

namespace kestrune::ui::qt {

QPalette darkPalette() {
  const QColor window(0x24, 0x26, 0x2a);
  const QColor base(0x1c, 0x1e, 0x21);
  const QColor text(0xee, 0xef, 0xf1);
  const QColor faint(0x80, 0x84, 0x8b);
  const QColor accent(0x4a, 0x9e, 0xf5);
  QPalette palette(text, window, window.lighter(150), window.darker(150), window.darker(120), text, Qt::white,
                   base, window);
  palette.setColor(QPalette::Highlight, accent);
  palette.setColor(QPalette::HighlightedText, Qt::white);
  palette.setColor(QPalette::ToolTipBase, base);
  palette.setColor(QPalette::ToolTipText, text);
  palette.setColor(QPalette::PlaceholderText, faint);
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
    palette.setColor(QPalette::Disabled, role, faint);
  }
  return palette;
}

QPalette desktopPalette(const QPalette& theme, const desktop::Appearance& appearance) {
  using Scheme = desktop::Appearance::Scheme;
  QPalette palette = theme;
  const bool isDark = colorSchemeFor(theme).isDark;
  if (appearance.scheme == Scheme::dark && !isDark) palette = darkPalette();
  if (appearance.scheme == Scheme::light && isDark) palette = QApplication::style()->standardPalette();
  if (appearance.accent) {
    const auto part = [&](std::size_t i) { return static_cast<float>((*appearance.accent).at(i)); };
    palette.setColor(QPalette::Highlight, QColor::fromRgbF(part(0), part(1), part(2)));
  }
  return palette;
}

}  // namespace kestrune::ui::qt
