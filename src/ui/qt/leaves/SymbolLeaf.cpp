#include "ui/qt/leaves/SymbolLeaf.h"

#include <cmath>

#include <QFileInfo>
#include <QPainter>

#include "ui/qt/theme/Theme.h"

namespace kestrune::ui::qt {
namespace {

// Sizes relative to the font's: the box, and the drawing in it, which reaches from the top of the capitals to
// about the descenders.
constexpr double boxShare = 1.2;
constexpr double drawingShare = 1.06;
constexpr double capitalHeightShare = 0.72;

constexpr double dividerOpacity = 0.14;

constexpr qint64 maxFileSize = 4 << 20;

// The path comes from an installed application; opening a pipe or a device could block.
QIcon iconAt(const QString& path) {
  const QFileInfo file(path);
  return file.isFile() && file.size() <= maxFileSize ? QIcon(path) : QIcon();
}

QIcon iconNamed(const std::string& name) {
  if (name.empty()) return {};
  const QString wanted = QString::fromStdString(name);
  return wanted.startsWith(QLatin1Char('/')) ? iconAt(wanted) : QIcon::fromTheme(wanted);
}

}  // namespace

SymbolLeaf::SymbolLeaf(Theme& theme, QWidget* parent) : Leaf(theme, parent, QAccessible::Graphic) {}

bool SymbolLeaf::show(const Content& content, const LeafStyle& style) {
  const Change change = adopt(style);
  const auto& next = std::get<SymbolContent>(content);
  if (next != content_) {
    content_ = next;
    update();
  }
  return change == Change::font;
}

LeafMetrics SymbolLeaf::measure(Proposal) {
  const double size = style().font.size;
  const double side = std::round(size * boxShare);
  // In a row aligned at the baseline the symbol is centred on the capitals.
  return {{side, side}, std::round(side / 2 + size * capitalHeightShare / 2)};
}

void SymbolLeaf::paint(QPainter& painter) {
  const double scale = devicePixelRatioF();
  const double side = std::round(style().font.size * drawingShare);
  // The opacity isn't part of the cached picture, since it may change many times a second.
  const QPixmap picture = theme().symbol(content_.name, side, theme().color(style().foreground), scale);
  if (picture.isNull()) return;
  const auto aligned = [scale](double length) { return std::floor(length * scale) / scale; };
  painter.setOpacity(style().opacity);
  painter.drawPixmap(QPointF(aligned((width() - side) / 2), aligned((height() - side) / 2)), picture);
}

DividerLeaf::DividerLeaf(Theme& theme, QWidget* parent) : Leaf(theme, parent, QAccessible::Separator) {}

bool DividerLeaf::show(const Content&, const LeafStyle& style) {
  adopt(style);
  return false;
}

void DividerLeaf::paint(QPainter& painter) {
  const double scale = devicePixelRatioF();
  const auto middle = [scale](int length) { return std::floor((length * scale - 1) / 2) / scale; };
  const double hair = 1 / scale;
  const QRectF line = width() >= height() ? QRectF(0, middle(height()), width(), hair)
                                          : QRectF(middle(width()), 0, hair, height());
  painter.fillRect(line, color(Color(ColorRole::primary, dividerOpacity)));
}

IconLeaf::IconLeaf(Theme& theme, QWidget* parent) : Leaf(theme, parent, QAccessible::Graphic) {}

bool IconLeaf::show(const Content& content, const LeafStyle& style) {
  adopt(style);
  const auto& next = std::get<IconContent>(content);
  if (next == content_) return false;
  if (next.name != content_.name) icon_ = iconNamed(next.name);
  content_ = next;
  update();
  return false;
}

void IconLeaf::paint(QPainter& painter) {
  const double scale = devicePixelRatioF();
  painter.setOpacity(style().opacity);
  const QPixmap picture = icon_.pixmap(size(), scale);
  if (!picture.isNull()) {
    const QSizeF shown = QSizeF(picture.size()) / picture.devicePixelRatio();
    painter.drawPixmap(QPointF((width() - shown.width()) / 2, (height() - shown.height()) / 2), picture);
    return;
  }
  const double side = style().font.size;
  const QPixmap symbol =
      theme().symbol(content_.fallbackSymbol, side, theme().color(style().foreground), scale);
  if (!symbol.isNull()) painter.drawPixmap(QPointF((width() - side) / 2, (height() - side) / 2), symbol);
}

}  // namespace kestrune::ui::qt
