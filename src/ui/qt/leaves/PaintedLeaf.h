#pragma once

#include <QAccessible>

#include "ui/qt/leaves/Leaf.h"

class QPainter;

namespace kestrune::ui::qt {

// What the leaves have in common: how they follow their style and the theme, their background, and what
// assistive tools see of them. They leave the mouse to what lies around them.
class PaintedLeaf : public Leaf {
 public:
  QAccessible::Role accessibleRole() const { return role_; }
  // Says nothing to assistive tools: another element speaks for it, or it has no words.
  bool isDecoration() const;

 protected:
  PaintedLeaf(Theme& theme, QWidget* parent, QAccessible::Role role);

  enum class Change : std::uint8_t {
    none,
    look,  // to be painted anew
    font,  // to be measured anew too
  };
  // Takes the style over and prepares the background. What differs from the last time, the theme included?
  Change adopt(const LeafStyle& style);
  const LeafStyle& style() const { return style_; }
  QColor color(const Color& color) const;

  void paintEvent(QPaintEvent* event) override;
  // Draws everything but the background.
  virtual void paint(QPainter& painter) = 0;

 private:
  QAccessible::Role role_;
  LeafStyle style_;
  unsigned generation_ = 0;
};

// A leaf that fills the space it is given.
class FillingLeaf : public PaintedLeaf {
 public:
  LeafMetrics measure(Proposal proposal) override;

 protected:
  using PaintedLeaf::PaintedLeaf;
};

}  // namespace kestrune::ui::qt
