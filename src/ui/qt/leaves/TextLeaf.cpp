#include "ui/qt/leaves/TextLeaf.h"

#include <algorithm>
#include <cmath>

#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

#include "ui/qt/leaves/ToolTip.h"
#include "ui/qt/theme/Theme.h"

namespace kestrune::ui::qt {
namespace {

// The layout works in whole pixels; a text that is wider by less than one isn't elided.
constexpr double tolerance = 0.6;
constexpr std::size_t maxKnownWidths = 8;

QString singleLine(QString text) {
  for (QChar& character : text) {
    const QChar::Category category = character.category();
    const bool breaksLine = category == QChar::Other_Control || category == QChar::Separator_Line ||
                            category == QChar::Separator_Paragraph;
    if (breaksLine) character = QLatin1Char(' ');
  }
  return text;
}

}  // namespace

TextLeaf::TextLeaf(Theme& theme, QWidget* parent) : Leaf(theme, parent, QAccessible::StaticText) {}

bool TextLeaf::show(const Content& content, const LeafStyle& style) {
  const Change change = adopt(style);
  const auto& next = std::get<TextContent>(content);
  if (change == Change::none && next == content_) return false;
  const bool hasNewLimit = next.lineLimit != content_.lineLimit;
  content_ = next;
  QString text = theme().text(content_);
  text = content_.isKey ? text.replace(QLatin1Char('\n'), QChar(QChar::LineSeparator))
                        : singleLine(std::move(text));
  if (!style.accessibilityLabel && accessibleName() != text) setAccessibleName(text);
  if (change != Change::font && !hasNewLimit && text == text_) return false;

  const double oldWidth = naturalWidth_;
  const std::size_t oldCount = natural_.size();
  text_ = std::move(text);
  shape();
  update();
  const bool sameSize = std::ceil(naturalWidth_) == std::ceil(oldWidth) && natural_.size() == oldCount;
  if (change != Change::font && !hasNewLimit && sameSize && wrapsAsBefore()) return false;
  wrapped_.clear();
  hasForgottenWraps_ = false;
  return true;
}

bool TextLeaf::wrapsAsBefore() const {
  return !hasForgottenWraps_ && std::ranges::all_of(wrapped_, [this](const auto& known) {
    return wrappedSize(known.first) == known.second;
  });
}

void TextLeaf::shape() {
  natural_.clear();
  const QFont& font = theme().font(style().font);
  const auto cell = theme().digitCell(style().font);
  for (const QString& line : text_.split(QChar(QChar::LineSeparator)))
    natural_.push_back(shapeLine(line, font, cell));
  naturalWidth_ = 0;
  for (const TextLine& line : natural_) naturalWidth_ = std::max(naturalWidth_, line.width);
  fitted_.clear();
  fittedWidth_ = -1;
  isElided_ = false;
}

double TextLeaf::lineHeight() const {
  const QFontMetricsF& metrics = theme().metrics(style().font);
  return std::ceil(metrics.ascent()) + std::ceil(metrics.descent());
}

double TextLeaf::minWidth() const {
  // Room for a letter or two and the ellipsis; when wrapped, for a short word.
  const double wanted = style().font.size * (content_.lineLimit == 1 ? 2 : 3);
  return std::min(std::ceil(naturalWidth_), wanted);
}

LeafMetrics TextLeaf::measure(Proposal proposal) {
  const double baseline = std::ceil(theme().metrics(style().font).ascent());
  const double natural = std::ceil(naturalWidth_);
  const double offered = proposal.width.value_or(unlimited);
  const double naturalHeight = lineHeight() * static_cast<double>(natural_.size());
  if (offered >= natural) return {{natural, naturalHeight}, baseline};
  if (offered >= naturalWidth_) return {{offered, naturalHeight}, baseline};
  if (content_.lineLimit == 1) return {{std::max(offered, minWidth()), naturalHeight}, baseline};

  const double limit = std::max(std::floor(offered), minWidth());
  if (limit >= natural) return {{natural, naturalHeight}, baseline};
  const auto known = std::ranges::find(wrapped_, limit, &std::pair<double, Size>::first);
  if (known != wrapped_.end()) return {known->second, baseline};
  if (wrapped_.size() >= maxKnownWidths) {
    wrapped_.clear();
    hasForgottenWraps_ = true;
  }
  wrapped_.emplace_back(limit, wrappedSize(limit));
  return {wrapped_.back().second, baseline};
}

Size TextLeaf::wrappedSize(double width) const {
  const std::vector<TextLine> lines = shapedForWidth(width);
  Size size{0, lineHeight() * static_cast<double>(lines.size())};
  for (const TextLine& line : lines) size.width = std::max(size.width, std::ceil(line.width));
  return size;
}

std::vector<TextLine> TextLeaf::shapedForWidth(double width) const {
  const QFont& font = theme().font(style().font);
  const auto cell = theme().digitCell(style().font);
  std::vector<TextLine> lines;
  for (const QString& line : breakIntoLines(text_, font, width)) lines.push_back(shapeLine(line, font, cell));
  return lines;
}

void TextLeaf::fit() {
  if (fittedWidth_ == width()) return;
  fittedWidth_ = width();
  fitted_.clear();
  isElided_ = false;
  if (naturalWidth_ <= width() + tolerance) return;
  if (content_.lineLimit != 1) {
    fitted_ = shapedForWidth(width() + tolerance);
    return;
  }
  isElided_ = true;
  const Font& font = style().font;
  const QFontMetricsF& metrics = theme().metrics(font);
  const double addedByCells = naturalWidth_ - metrics.horizontalAdvance(text_);
  const QString elided = metrics.elidedText(text_, Qt::ElideRight, width() - std::max(addedByCells, 0.0));
  fitted_.push_back(shapeLine(elided, theme().font(font), theme().digitCell(font)));
}

void TextLeaf::paint(QPainter& painter) {
  fit();
  painter.setPen(color(style().foreground));
  double baseline = std::ceil(theme().metrics(style().font).ascent());
  for (const TextLine& line : fitted_.empty() ? natural_ : fitted_) {
    for (const QGlyphRun& run : line.runs) painter.drawGlyphRun(QPointF(0, baseline), run);
    baseline += lineHeight();
  }
}

bool TextLeaf::event(QEvent* event) {
  if (event->type() == QEvent::ToolTip && toolTip().isEmpty()) {
    fit();
    if (isElided_) {
      QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), plainToolTip(text_), this);
      return true;
    }
  }
  return Leaf::event(event);
}

}  // namespace kestrune::ui::qt
