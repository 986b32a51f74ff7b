#include "ui/qt/leaves/IconLeaf.h"

#include <QFileInfo>
#include <QPainter>

#include "ui/qt/theme/Theme.h"

namespace kestrune::ui::qt {
namespace {

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
