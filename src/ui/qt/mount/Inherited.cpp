#include "ui/qt/mount/Inherited.h"

#include <algorithm>

namespace kestrune::ui::qt {
namespace {

constexpr double disabledOpacity = 0.45;

// A surface's even fill is a backdrop for its content, unless the content may reach into the rounded corners.
bool keepsClearOfCorners(const View& view, double cornerRadius) {
  if (cornerRadius <= 0) return true;
  const auto* padding = view.children.front().as<PaddingContent>();
  const double needed = cornerRadius * 0.3;  // a corner of radius r recedes by (1 − 1/√2)·r
  return padding != nullptr && padding->insets.top >= needed && padding->insets.leading >= needed &&
         padding->insets.bottom >= needed && padding->insets.trailing >= needed;
}

std::optional<Color> backdropOn(const View& view, const BackgroundContent& surface, double opacity,
                                const std::optional<Color>& behind) {
  if (surface.fill.role == ColorRole::clear || surface.fill.opacity == 0) return behind;
  const bool isOpaque = surface.fill.opacity >= 1 && opacity >= 1;
  if (isOpaque && keepsClearOfCorners(view, surface.cornerRadius)) return surface.fill;
  return std::nullopt;
}

}  // namespace

Inherited passedOn(const View& view, const Inherited& around, double pulse) {
  Inherited scope = around;
  scope.depth += 1;
  if (view.font) scope.font = *view.font;
  if (view.foreground) scope.foreground = *view.foreground;
  double opacity = view.opacity * pulse;
  if (traitsOf(view).isDisabled && scope.isEnabled) {
    scope.isEnabled = false;
    opacity = std::min(opacity, disabledOpacity);  // a view that is faint anyway looks disabled enough
  }
  scope.opacity *= opacity;
  if (const auto* surface = view.as<BackgroundContent>()) {
    scope.backdrop = backdropOn(view, *surface, scope.opacity, scope.backdrop);
  }
  return scope;
}

}  // namespace kestrune::ui::qt
