#pragma once

#include <map>
#include <optional>
#include <string>
#include <tuple>

#include <QColor>
#include <QFont>
#include <QFontMetricsF>
#include <QPixmap>

#include "texts/Catalogue.h"
#include "ui/qt/theme/Animation.h"
#include "ui/qt/theme/ColorScheme.h"
#include "ui/qt/theme/PictureCache.h"
#include "ui/view/View.h"

namespace kestrune::ui::qt {

// Resolves colour roles, fonts, texts and symbols for this desktop. Follows the application's palette and
// font. Main thread only.
class Theme {
 public:
  // The catalogue must outlive the theme.
  explicit Theme(const Catalogue& catalogue);

  // Rereads the application's palette and font. Returns true if anything looks different now.
  bool refresh();
  // Changes with each refresh that changed anything.
  unsigned generation() const { return generation_; }
  bool isDark() const { return scheme_.isDark; }

  QColor color(const Color& color, double opacity = 1) const;
  const QFont& font(const Font& font);
  const QFontMetricsF& metrics(const Font& font);
  // With monospaced digits, the width of the cell to centre each digit in; absent if the font's digits all
  // have the same width.
  std::optional<double> digitCell(const Font& font);
  // The text as shown: a key is looked up in the catalogue, data is unchanged.
  QString text(const TextContent& content) const;
  // The symbol of that name, `size` high and wide, in one colour; null if the name isn't in the symbol table.
  QPixmap symbol(const std::string& name, double size, const QColor& color, double devicePixelRatio);
  // A picture from the resources, the same way.
  QPixmap image(const std::string& name, double width, double height, const QColor& color,
                double devicePixelRatio);

  AnimationDriver& animations() { return animations_; }

 private:
  struct KnownFont {
    explicit KnownFont(const QFont& of);
    QFont font;
    QFontMetricsF metrics;
    std::optional<double> digitCell;
  };
  const KnownFont& known(const Font& font);

  const Catalogue& catalogue_;
  unsigned generation_ = 0;
  QFont applicationFont_;
  ColorScheme scheme_;
  std::map<std::tuple<double, FontWeight, bool>, KnownFont> fonts_;
  PictureCache pictures_;
  AnimationDriver animations_;
};

// Escapes "&", which would mark a mnemonic in buttons and menus.
QString withoutMnemonic(QString text);

}  // namespace kestrune::ui::qt
