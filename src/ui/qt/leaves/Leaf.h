#pragma once

#include <memory>
#include <optional>

#include <QWidget>

#include "ui/view/Layout.h"
#include "ui/view/View.h"

namespace kestrune::ui::qt {

class Theme;

// What a leaf inherits from the views around it.
struct LeafStyle {
  Font font;
  Color foreground;
  double opacity = 1;  // of the leaf and all it draws
  // The even, opaque colour that lies behind the leaf, where there is one: the leaf then fills its own
  // background and what lies behind is not painted again with it.
  std::optional<Color> backdrop;
  std::optional<TextContent> accessibilityLabel;
  bool isAccessibilityHidden = false;  // an element around it speaks for it
  friend bool operator==(const LeafStyle&, const LeafStyle&) = default;
};

// A widget that shows one view without children. It repaints only if what it shows has changed.
class Leaf : public QWidget {
 public:
  // True if `measure` may yield something else than before.
  virtual bool show(const Content& content, const LeafStyle& style) = 0;
  virtual LeafMetrics measure(Proposal proposal) = 0;

 protected:
  Leaf(Theme& theme, QWidget* parent) : QWidget(parent), theme_(theme) {}
  Theme& theme() const { return theme_; }

 private:
  Theme& theme_;
};

}  // namespace kestrune::ui::qt
