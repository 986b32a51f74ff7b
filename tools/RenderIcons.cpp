// Renders a drawing in several sizes, as SIZE.png in the given folder.

#include <cstdio>
#include <cstdlib>

#include <QDir>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

namespace {

bool render(QSvgRenderer& drawing, int size, const QString& file) {
  QImage picture(size, size, QImage::Format_ARGB32_Premultiplied);
  if (picture.isNull()) return false;
  picture.fill(Qt::transparent);
  QPainter painter(&picture);
  painter.setRenderHint(QPainter::Antialiasing);
  drawing.render(&painter, QRectF(0, 0, size, size));
  painter.end();
  return picture.save(file, "PNG");
}

}  // namespace

int main(int argc, char** argv) {
  const QGuiApplication application(argc, argv);
  const QStringList arguments = QGuiApplication::arguments();
  if (arguments.size() < 4) {
    std::fputs("usage: kestrune_render_icons DRAWING FOLDER SIZE ...\n", stderr);
    return EXIT_FAILURE;
  }
  QSvgRenderer drawing(arguments[1]);
  const QDir folder(arguments[2]);
  if (!drawing.isValid() || !folder.mkpath(QStringLiteral("."))) {
    std::fputs("kestrune_render_icons: no drawing there, or no folder to write to\n", stderr);
    return EXIT_FAILURE;
  }
  for (const QString& size : arguments.mid(3)) {
    if (render(drawing, size.toInt(), folder.filePath(size + QStringLiteral(".png")))) continue;
    std::fprintf(stderr, "kestrune_render_icons: can't write the picture of size %s\n", qPrintable(size));
    return EXIT_FAILURE;
  }
  return EXIT_SUCCESS;
}
