#pragma once

#include <map>
#include <string>
#include <tuple>

#include <QColor>
#include <QPixmap>

namespace kestrune::ui::qt {

// Renders the program's picture resources at the requested size and caches them. Parts drawn in
// `currentColor` take the given colour. Main thread only.
class PictureCache {
 public:
  static constexpr std::size_t capacity = 256;

  PictureCache();

  // `name` is the path below the resources' root without the extension; the picture is stretched to `width`
  // by `height`. Null if no picture has that name.
  QPixmap picture(const std::string& name, double width, double height, const QColor& color,
                  double devicePixelRatio);
  void clear() { kept_.clear(); }

 private:
  using Key = std::tuple<std::string, int, int, QRgb, double>;
  std::map<Key, QPixmap> kept_;
};

}  // namespace kestrune::ui::qt
