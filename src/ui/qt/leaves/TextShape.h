#pragma once

#include <optional>
#include <vector>

#include <QFont>
#include <QGlyphRun>
#include <QList>
#include <QString>

namespace kestrune::ui::qt {

// One line of text, ready to be painted, with the origin at the start of its baseline.
struct TextLine {
  QList<QGlyphRun> runs;
  double width = 0;
};

// With `digitCell`, each digit is centred in a cell of that width.
TextLine shapeLine(const QString& text, const QFont& font, std::optional<double> digitCell);

// The lines that the text takes at the given width, broken between words where possible, and at line
// separators.
std::vector<QString> breakIntoLines(const QString& text, const QFont& font, double width);

}  // namespace kestrune::ui::qt
