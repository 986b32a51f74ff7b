#include "ui/qt/leaves/TextShape.h"

#include <QTextLayout>

namespace kestrune::ui::qt {
namespace {

constexpr double unlimitedWidth = 1e6;

bool isDigit(QChar character) {
  return character >= QLatin1Char('0') && character <= QLatin1Char('9');
}

TextLine shapeRun(const QString& text, const QFont& font) {
  QTextLayout layout(text, font);
  layout.setCacheEnabled(true);
  layout.beginLayout();
  QTextLine line = layout.createLine();
  if (!line.isValid()) return {};
  line.setLineWidth(unlimitedWidth);
  // The ascent may be that of a substitute font.
  line.setPosition({0, -line.ascent()});
  layout.endLayout();
  return {layout.glyphRuns(), line.naturalTextWidth()};
}

void append(TextLine& line, TextLine more, double offset) {
  for (QGlyphRun& run : more.runs) {
    QList<QPointF> positions = run.positions();
    for (QPointF& position : positions) position.rx() += offset;
    run.setPositions(positions);
    line.runs.append(run);
  }
}

}  // namespace

TextLine shapeLine(const QString& text, const QFont& font, std::optional<double> digitCell) {
  if (!digitCell) return shapeRun(text, font);
  TextLine line;
  qsizetype start = 0;
  while (start < text.size()) {
    qsizetype end = start + 1;
    if (isDigit(text[start])) {
      TextLine digit = shapeRun(text.mid(start, 1), font);
      const double inset = (*digitCell - digit.width) / 2;
      append(line, std::move(digit), line.width + inset);
      line.width += *digitCell;
    } else {
      while (end < text.size() && !isDigit(text[end])) ++end;
      TextLine piece = shapeRun(text.mid(start, end - start), font);
      const double width = piece.width;
      append(line, std::move(piece), line.width);
      line.width += width;
    }
    start = end;
  }
  return line;
}

std::vector<QString> breakIntoLines(const QString& text, const QFont& font, double width) {
  QTextLayout layout(text, font);
  QTextOption option;
  option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
  layout.setTextOption(option);
  std::vector<QString> lines;
  layout.beginLayout();
  for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
    line.setLineWidth(width);
    QString broken = text.mid(line.textStart(), line.textLength());
    while (!broken.isEmpty() && broken.back().isSpace()) broken.chop(1);
    lines.push_back(std::move(broken));
  }
  layout.endLayout();
  return lines;
}

}  // namespace kestrune::ui::qt
