#pragma once

#include <QString>
#include <QTextDocument>

namespace kestrune::ui::qt {

// A tooltip that shows the text verbatim. Qt renders anything that looks like markup, and a process may have
// such a name.
inline QString plainToolTip(const QString& text) {
  if (!Qt::mightBeRichText(text)) return text;
  return QStringLiteral("<span>") + text.toHtmlEscaped() + QStringLiteral("</span>");
}

}  // namespace kestrune::ui::qt
