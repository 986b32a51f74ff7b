#include <gtest/gtest.h>

#include "ui/qt/MountSupport.h"
#include "ui/qt/mount/Inherited.h"

namespace kestrune::ui::qt {
namespace {

constexpr Color red = Color::rgb(1, 0, 0);
constexpr Color blue = Color::rgb(0, 0, 1);

TEST(Inherited, isPassedOnWithTheViewsOwnStyle) {
  Inherited around;
  around.opacity = 0.5;
  around.backdrop = blue;
  EXPECT_EQ(passedOn(text("plain"), around, 1).font, around.font);
  const Inherited styled = passedOn(text("a").withFont(20).withForeground(red).withOpacity(0.5), around, 0.8);
  EXPECT_EQ(styled.font.size, 20);
  EXPECT_EQ(styled.foreground, red);
  EXPECT_DOUBLE_EQ(styled.opacity, 0.5 * 0.5 * 0.8);
  EXPECT_EQ(styled.backdrop, blue);
  EXPECT_EQ(styled.depth, 1);

  const Inherited disabled = passedOn(text("a").disabled(true), around, 1);
  EXPECT_FALSE(disabled.isEnabled);
  EXPECT_DOUBLE_EQ(disabled.opacity, 0.5 * 0.45);
  EXPECT_EQ(passedOn(text("a").disabled(true), disabled, 1).opacity, disabled.opacity) << "faded once";
  EXPECT_DOUBLE_EQ(passedOn(text("a").withOpacity(0.2).disabled(true), around, 1).opacity, 0.1);
}

TEST(Inherited, hasABackdropOnlyWhereTheColourBehindIsEven) {
  const auto on = [](Color fill, double radius, double inset, double opacity = 1) {
    return passedOn(text("a")
                        .padding(inset)
                        .background({.fill = fill, .cornerRadius = radius})
                        .withOpacity(opacity),
                    {.backdrop = blue}, 1)
        .backdrop;
  };
  EXPECT_EQ(on(ColorRole::clear, 0, 0), blue);
  EXPECT_EQ(on(red, 0, 0), red);
  EXPECT_EQ(on(red, 10, 3), red);
  EXPECT_EQ(on(red, 10, 2.9), std::nullopt) << "reaches into the corners";
  EXPECT_EQ(on(red.withOpacity(0.5), 0, 0), std::nullopt);
  EXPECT_EQ(on(red, 0, 0, 0.5), std::nullopt);
}

// The larger surface is painted by pieces of a small picture, the smaller one by paths.
TEST(Surface, paintsFillBorderAndShadow) {
  for (const QSize size : {QSize(80, 60), QSize(22, 20)}) {
    Stage stage(zstack({}, {})
                    .size(size.width(), size.height())
                    .background({.fill = blue,
                                 .cornerRadius = 6,
                                 .border = red,
                                 .borderWidth = 2,
                                 .shadow = ColorRole::black,
                                 .shadowRadius = 4,
                                 .shadowOffsetY = 2}),
                {120, 100});
    const QImage image = stage.host.grab().toImage();
    const QRect bounds(QPoint(60 - size.width() / 2, 50 - size.height() / 2), size);
    const QColor window = image.pixelColor(0, 0);
    EXPECT_EQ(image.pixelColor(bounds.center()), QColor(Qt::blue));
    for (const int inset : {0, 1}) {
      EXPECT_EQ(image.pixelColor(bounds.left() + inset, 50), QColor(Qt::red));
      EXPECT_EQ(image.pixelColor(bounds.right() - inset, 50), QColor(Qt::red));
      EXPECT_EQ(image.pixelColor(60, bounds.top() + inset), QColor(Qt::red));
      EXPECT_EQ(image.pixelColor(60, bounds.bottom() - inset), QColor(Qt::red));
    }
    EXPECT_EQ(image.pixelColor(60, bounds.bottom() - 2), QColor(Qt::blue));
    EXPECT_LT(image.pixelColor(bounds.topLeft()).red(), window.red()) << "a round corner over the shadow";
    EXPECT_LT(image.pixelColor(60, bounds.bottom() + 6).red(), window.red());
    EXPECT_EQ(image.pixelColor(60, bounds.bottom() + 7), window);
    EXPECT_LT(image.pixelColor(60, bounds.top() - 2).red(), window.red());
    EXPECT_EQ(image.pixelColor(60, bounds.top() - 3), window);
    EXPECT_EQ(image.pixelColor(bounds.left() - 5, 50), window);
  }
}

}  // namespace
}  // namespace kestrune::ui::qt
