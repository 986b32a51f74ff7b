#include <QDir>
#include <gtest/gtest.h>

#include "ui/qt/LeafSupport.h"
#include "ui/window/MainTab.h"

namespace kestrune::ui::qt {
namespace {

QPalette palette(QColor window, QColor text, QColor highlight) {
  QPalette made;
  made.setColor(QPalette::Window, window);
  made.setColor(QPalette::WindowText, text);
  made.setColor(QPalette::Highlight, highlight);
  return made;
}

bool hasInk(const QPixmap& pixmap) {
  QPixmap empty(pixmap.size());
  empty.fill(Qt::transparent);
  return !pixmap.isNull() && pixmap.toImage() != empty.toImage();
}

TEST(LeafColors, areReadableUnderAnyPalette) {
  const QPalette palettes[] = {
      palette(0xefefef, Qt::black, 0x308cc6),   palette(Qt::white, 0x333333, Qt::white),
      palette(Qt::black, Qt::white, Qt::black), palette(0x2a2a2d, Qt::white, 0x888888),
      palette(0x353535, 0x777777, 0x1f6feb),    palette(0xf6f5f4, 0xcccccc, 0xffe680),
  };
  for (const QPalette& used : palettes) {
    const ColorScheme scheme = colorSchemeFor(used);
    SCOPED_TRACE(used.color(QPalette::Window).name().toStdString());
    for (const QColor& behind : {scheme.window, scheme.controlBackground}) {
      EXPECT_GT(contrast(scheme.of(ColorRole::primary), behind), 7);
      EXPECT_GT(contrast(scheme.of(ColorRole::secondary), behind), 4.49);
      EXPECT_GT(contrast(scheme.of(ColorRole::tertiary), behind), 4.49);
      EXPECT_GT(contrast(scheme.of(ColorRole::red), behind), 4);
      for (const ColorRole role : {ColorRole::accent, ColorRole::orange, ColorRole::green}) {
        EXPECT_GT(contrast(scheme.of(role), behind), 2.5);
      }
    }
    EXPECT_GT(scheme.controlBackground.lightness(), scheme.window.lightness());
  }
  EXPECT_EQ(colorSchemeFor(palettes[0]).accent, QColor(0x308cc6)) << "the desktop's own if it stands out";
  EXPECT_TRUE(colorSchemeFor(palettes[3]).isDark);
}

TEST(LeafTheme, followsThePalette) {
  const QPalette before = QGuiApplication::palette();
  const Catalogue catalogue{};
  Theme theme(catalogue);
  const unsigned generation = theme.generation();
  EXPECT_FALSE(theme.refresh());
  EXPECT_EQ(theme.generation(), generation);
  QApplication::setPalette(palette(0x202020, Qt::white, Qt::blue));
  EXPECT_TRUE(theme.refresh());
  EXPECT_NE(theme.generation(), generation);
  EXPECT_TRUE(theme.isDark());
  QApplication::setPalette(before);
}

TEST(LeafTheme, drawsEverySymbolOfTheTable) {
  const Catalogue catalogue{};
  Theme theme(catalogue);
  const QStringList files = QDir(QStringLiteral(":/kestrune/symbols")).entryList();
  EXPECT_GE(files.size(), 60);
  for (const QString& file : files) {
    const std::string name = file.chopped(4).toStdString();
    EXPECT_TRUE(hasInk(theme.symbol(name, 16, Qt::black, 1))) << name;
  }
  for (const MainTabEntry& tab : mainTabs)
    EXPECT_FALSE(theme.symbol(std::string(tab.symbol), 16, Qt::black, 1).isNull());
  EXPECT_TRUE(theme.symbol("no.such.symbol", 16, Qt::black, 1).isNull());
  EXPECT_TRUE(hasInk(theme.image("MenuBarIconTemplate", 16, 16, Qt::black, 1)));
}

}  // namespace
}  // namespace kestrune::ui::qt
