#pragma once

#include <cstdint>
#include <optional>

#include <QAccessible>
#include <QWidget>

#include "ui/view/Layout.h"
#include "ui/view/View.h"

class QPainter;

namespace kestrune::ui::qt {

class Theme;

// What a leaf inherits from the views around it.
struct LeafStyle {
  Font font;
  Color foreground;
  // Applies to everything the leaf draws.
  double opacity = 1;
  // The uniform, opaque colour behind the leaf, if there is one. The leaf then fills its own background, and
  // repainting it doesn't repaint what is behind it.
  std::optional<Color> backdrop;
  std::optional<TextContent> accessibilityLabel;
  // An element around the leaf represents it to assistive tools.
  bool isAccessibilityHidden = false;
  friend bool operator==(const LeafStyle&, const LeafStyle&) = default;
};

// A widget that shows one view without children. It repaints only when its appearance changes, follows its
// style and the theme, and leaves mouse events to the widgets around it.
class Leaf : public QWidget {
 public:
  // Returns true if `measure` may now yield something else.
  virtual bool show(const Content& content, const LeafStyle& style) = 0;
  // By default a leaf takes the size it is offered.
  virtual LeafMetrics measure(Proposal proposal);

  QAccessible::Role accessibleRole() const { return role_; }
  // True if assistive tools should skip the leaf: another element represents it, or it has no name.
  bool isDecoration() const;

 protected:
  Leaf(Theme& theme, QWidget* parent, QAccessible::Role role);

  enum class Change : std::uint8_t {
    none,
    // Needs repainting.
    look,
    // Needs measuring and repainting.
    font,
  };
  // Adopts the style and prepares the background. Returns what differs from last time, the theme included.
  Change adopt(const LeafStyle& style);
  Theme& theme() const { return theme_; }
  const LeafStyle& style() const { return style_; }
  // The colour in this theme, with the leaf's opacity.
  QColor color(const Color& color) const;

  void paintEvent(QPaintEvent* event) override;
  // Draws everything but the background.
  virtual void paint(QPainter& painter) = 0;

 private:
  Theme& theme_;
  QAccessible::Role role_;
  LeafStyle style_;
  unsigned generation_ = 0;
};

}  // namespace kestrune::ui::qt
