#pragma once

#include <map>
#include <string>
#include <tuple>

#include <QColor>
#include <QPixmap>
#include <QSize>
#include <QString>

namespace kestrune::ui::qt {

// Pictures from the program's resources, drawn at the size they are asked for and kept. What a picture draws
// in `currentColor` appears in the given colour. Main thread only.
class PictureCache {
 public:
  static constexpr std::size_t capacity = 256;

  PictureCache();

  // `name` below the resources' root, without the ending; the picture is stretched over `width` times
  // `height`. Null where there is none of that name.
  QPixmap picture(const std::string& name, double width, double height, const QColor& color,
                  double devicePixelRatio);
  void clear() { kept_.clear(); }

 private:
  using Key = std::tuple<std::string, int, int, QRgb, double>;
  std::map<Key, QPixmap> kept_;
};

}  // namespace kestrune::ui::qt
