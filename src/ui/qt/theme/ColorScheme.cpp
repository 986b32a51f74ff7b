#include "ui/qt/theme/ColorScheme.h"

#include <algorithm>
#include <cmath>

namespace kestrune::ui::qt {
namespace {

// A line or a filled bar in the accent colour must stand out from the card, and from grey ones beside it.
constexpr double minAccentContrast = 2.6;
constexpr double minAccentSaturation = 0.25;
constexpr double minTextContrast = 9;
// For text of size 11.
constexpr double minCaptionContrast = 4.5;

double linear(double channel) {
  return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double luminance(const QColor& color) {
  return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

QColor opaque(QColor color) {
  color.setAlpha(255);
  return color;
}

QColor faint(QColor color, double alpha) {
  color.setAlphaF(static_cast<float>(alpha));
  return color;
}

// With the given alpha, or the lowest higher one that is readable.
QColor faintText(const ColorScheme& scheme, double alpha) {
  const auto isReadable = [&] {
    const QColor color = faint(scheme.primary, alpha);
    return contrast(color, scheme.window) >= minCaptionContrast &&
           contrast(color, scheme.controlBackground) >= minCaptionContrast;
  };
  while (alpha < 1 && !isReadable()) alpha = std::min(alpha + 0.02, 1.0);
  return faint(scheme.primary, alpha);
}

QColor accentFor(const QPalette& palette, const ColorScheme& scheme) {
  const QColor highlight = opaque(palette.color(QPalette::Active, QPalette::Highlight));
  const double lower =
      std::min(contrast(highlight, scheme.controlBackground), contrast(highlight, scheme.window));
  if (lower >= minAccentContrast && highlight.hsvSaturationF() >= minAccentSaturation) return highlight;
  return scheme.isDark ? QColor(0x5a, 0xa2, 0xff) : QColor(0x1f, 0x6f, 0xeb);
}

}  // namespace

QColor mixed(const QColor& from, const QColor& to, double share) {
  const auto channel = [share](float a, float b) { return static_cast<float>(a + (b - a) * share); };
  return QColor::fromRgbF(channel(from.redF(), to.redF()), channel(from.greenF(), to.greenF()),
                          channel(from.blueF(), to.blueF()), channel(from.alphaF(), to.alphaF()));
}

double contrast(const QColor& front, const QColor& back) {
  const double a = luminance(mixed(back, opaque(front), front.alphaF()));
  const double b = luminance(back);
  return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
}

ColorScheme colorSchemeFor(const QPalette& palette) {
  const QColor window = opaque(palette.color(QPalette::Active, QPalette::Window));
  const QColor text = opaque(palette.color(QPalette::Active, QPalette::WindowText));
  ColorScheme scheme;
  scheme.isDark = luminance(window) < 0.18;
  if (scheme.isDark) {
    // On pure black a card's shadow would be invisible.
    scheme.window = mixed(window, Qt::white, luminance(window) < 0.004 ? 0.06 : 0);
    scheme.controlBackground = mixed(scheme.window, Qt::white, 0.06);
    scheme.orange = QColor(0xff, 0xa0, 0x2e);
    scheme.red = QColor(0xff, 0x7d, 0x75);
    scheme.green = QColor(0x3f, 0xcb, 0x68);
    scheme.purple = QColor(0xc0, 0x84, 0xfc);
  } else {
    scheme.window = luminance(window) > 0.9 ? QColor(0xf3, 0xf3, 0xf5) : window;
    scheme.controlBackground = mixed(scheme.window, Qt::white, 0.9);
    scheme.orange = QColor(0xd9, 0x6c, 0x00);
    scheme.red = QColor(0xd6, 0x30, 0x31);
    scheme.green = QColor(0x1f, 0x95, 0x48);
    scheme.purple = QColor(0x8e, 0x44, 0xc9);
  }
  const QColor fallback = scheme.isDark ? Qt::white : Qt::black;
  const bool isReadable = contrast(text, scheme.window) >= minTextContrast;
  scheme.primary = mixed(isReadable ? text : fallback, scheme.window, 0.08);
  scheme.secondary = faintText(scheme, scheme.isDark ? 0.72 : 0.68);
  scheme.tertiary = faintText(scheme, scheme.isDark ? 0.56 : 0.54);
  scheme.quaternary = faint(scheme.primary, scheme.isDark ? 0.16 : 0.12);
  scheme.accent = accentFor(palette, scheme);
  return scheme;
}

QColor ColorScheme::of(ColorRole role) const {
  switch (role) {
    case ColorRole::clear:
      return {0, 0, 0, 0};
    case ColorRole::primary:
      return primary;
    case ColorRole::secondary:
      return secondary;
    case ColorRole::tertiary:
      return tertiary;
    case ColorRole::quaternary:
      return quaternary;
    case ColorRole::accent:
      return accent;
    case ColorRole::window:
      return window;
    case ColorRole::controlBackground:
      return controlBackground;
    case ColorRole::orange:
      return orange;
    case ColorRole::red:
      return red;
    case ColorRole::green:
      return green;
    case ColorRole::purple:
      return purple;
    case ColorRole::black:
      return Qt::black;
    case ColorRole::rgb:
      break;
  }
  return {};
}

}  // namespace kestrune::ui::qt
