#include "DarkPalette.h"

namespace kestrune::tools {

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

}  // namespace kestrune::tools
