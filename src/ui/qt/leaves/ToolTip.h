#pragma once

#include <QString>
#include <QTextDocument>

namespace kestrune::ui::qt {

// A tooltip that shows the text as it is. Qt takes what looks like markup for markup, and a process may be
// called so.
inline QString plainToolTip(const QString& text) {
  if (!Qt::mightBeRichText(text)) return text;
  return QStringLiteral("<span>") + text.toHtmlEscaped() + QStringLiteral("</span>");
}

}  // namespace kestrune::ui::qt
