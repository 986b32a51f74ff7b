#pragma once

#include <cstdint>
#include <limits>
#include <optional>

namespace kestrune::ui {

// Lengths are in device-independent pixels throughout.

// The meaning of a colour. Its look follows the desktop's palette, light or dark.
enum class ColorRole : std::uint8_t {
  clear,
  primary,  // text
  secondary,
  tertiary,
  quaternary,
  accent,
  window,             // behind everything else
  controlBackground,  // the surface of a card
  orange,
  red,
  green,
  purple,
  black,
  rgb,  // fixed: the components of Color
};

struct Color {
  ColorRole role = ColorRole::primary;
  double opacity = 1;
  // sRGB, 0 to 1, for the role `rgb` alone.
  double red = 0;
  double green = 0;
  double blue = 0;

  constexpr Color() = default;
  constexpr Color(ColorRole of, double withOpacity = 1)
      : role(of), opacity(withOpacity) {}  // NOLINT(google-explicit-constructor)
  static constexpr Color rgb(double red, double green, double blue) {
    Color color(ColorRole::rgb);
    color.red = red;
    color.green = green;
    color.blue = blue;
    return color;
  }
  constexpr Color withOpacity(double factor) const {
    Color color = *this;
    color.opacity *= factor;
    return color;
  }
  friend bool operator==(const Color&, const Color&) = default;
};

enum class FontWeight : std::uint8_t { regular, medium, semibold };

struct Font {
  double size = 13;
  FontWeight weight = FontWeight::regular;
  bool monospacedDigits = false;
  friend bool operator==(const Font&, const Font&) = default;
};

enum class HorizontalAlignment : std::uint8_t { leading, center, trailing };
enum class VerticalAlignment : std::uint8_t { top, center, bottom, firstTextBaseline };

struct Alignment {
  HorizontalAlignment horizontal = HorizontalAlignment::center;
  VerticalAlignment vertical = VerticalAlignment::center;
  friend bool operator==(const Alignment&, const Alignment&) = default;
};
inline constexpr Alignment topLeading{HorizontalAlignment::leading, VerticalAlignment::top};

struct Insets {
  double top = 0;
  double leading = 0;
  double bottom = 0;
  double trailing = 0;
  friend bool operator==(const Insets&, const Insets&) = default;
};

inline constexpr double unlimited = std::numeric_limits<double>::infinity();

// The size of a frame in one dimension. `fixed` overrides the others. With a minimum or a maximum the frame
// takes what it is offered within these limits; `unlimited` as the maximum fills the space.
struct Extent {
  std::optional<double> fixed;
  std::optional<double> min;
  std::optional<double> max;
  friend bool operator==(const Extent&, const Extent&) = default;
};

}  // namespace kestrune::ui
