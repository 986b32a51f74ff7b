#include "ui/qt/theme/PictureCache.h"

#include <cmath>

#include <QFile>
#include <QPainter>
#include <QSvgRenderer>

// The macro declares a function and must be used outside any namespace, even an unnamed one.
static void loadPictures() {  // NOLINT(misc-use-anonymous-namespace)
  Q_INIT_RESOURCE(kestrune_pictures);
}

namespace kestrune::ui::qt {
namespace {

constexpr auto inheritedColor = "currentColor";

QByteArray source(const std::string& name) {
  QFile file(QStringLiteral(":/kestrune/") + QString::fromStdString(name) + QStringLiteral(".svg"));
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QPixmap rendered(QByteArray svg, QSize size, const QColor& color) {
  const bool isTinted = svg.contains(inheritedColor);
  svg.replace(inheritedColor, "#000");
  QSvgRenderer renderer(svg);
  QPixmap pixmap(size);
  pixmap.fill(Qt::transparent);
  QPainter painter(&pixmap);
  renderer.render(&painter, QRectF(QPointF(), size));
  if (isTinted) {
    // Tinted as a whole, so that overlapping shapes don't add up in a translucent colour.
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(pixmap.rect(), color);
  }
  return pixmap;
}

}  // namespace

PictureCache::PictureCache() {
  loadPictures();
}

QPixmap PictureCache::picture(const std::string& name, double width, double height, const QColor& color,
                              double devicePixelRatio) {
  const QSize size(static_cast<int>(std::lround(width * devicePixelRatio)),
                   static_cast<int>(std::lround(height * devicePixelRatio)));
  if (size.isEmpty()) return {};
  const Key key(name, size.width(), size.height(), color.rgba(), devicePixelRatio);
  const auto known = kept_.find(key);
  if (known != kept_.end()) return known->second;

  const QByteArray svg = source(name);
  if (svg.isEmpty()) return {};
  QPixmap pixmap = rendered(svg, size, color);
  pixmap.setDevicePixelRatio(devicePixelRatio);
  // Pixmaps in use are shared with their users and survive this.
  if (kept_.size() >= capacity) kept_.clear();
  kept_.emplace(key, pixmap);
  return pixmap;
}

}  // namespace kestrune::ui::qt
