#include "ui/qt/leaves/PaintedLeaf.h"

#include <QPainter>

#include "ui/qt/theme/Theme.h"

namespace kestrune::ui::qt {

PaintedLeaf::PaintedLeaf(Theme& theme, QWidget* parent, QAccessible::Role role)
    : Leaf(theme, parent), role_(role) {}

bool PaintedLeaf::isDecoration() const {
  return style_.isAccessibilityHidden || accessibleName().isEmpty();
}

PaintedLeaf::Change PaintedLeaf::adopt(const LeafStyle& style) {
  const bool isNewTheme = generation_ != theme().generation();
  if (!isNewTheme && style == style_) return Change::none;
  const bool hasNewFont = isNewTheme || style.font != style_.font;
  if (isNewTheme || style.accessibilityLabel != style_.accessibilityLabel) {
    const QString name = style.accessibilityLabel ? theme().text(*style.accessibilityLabel) : QString();
    if (name != accessibleName()) setAccessibleName(name);
  }
  generation_ = theme().generation();
  style_ = style;
  setAttribute(Qt::WA_OpaquePaintEvent, style.backdrop.has_value());
  update();
  return hasNewFont ? Change::font : Change::look;
}

QColor PaintedLeaf::color(const Color& color) const {
  return theme().color(color, style_.opacity);
}

void PaintedLeaf::paintEvent(QPaintEvent* event) {
  QPainter painter(this);
  if (style_.backdrop) painter.fillRect(event->rect(), theme().color(*style_.backdrop));
  paint(painter);
}

LeafMetrics FillingLeaf::measure(Proposal proposal) {
  return {{proposal.width.value_or(defaultIdealLength), proposal.height.value_or(defaultIdealLength)}, 0};
}

}  // namespace kestrune::ui::qt
