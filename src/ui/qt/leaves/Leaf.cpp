#include "ui/qt/leaves/Leaf.h"

#include <QPainter>

#include "ui/qt/theme/Theme.h"

namespace kestrune::ui::qt {

Leaf::Leaf(Theme& theme, QWidget* parent, QAccessible::Role role)
    : QWidget(parent), theme_(theme), role_(role) {}

LeafMetrics Leaf::measure(Proposal proposal) {
  return {{proposal.width.value_or(defaultIdealLength), proposal.height.value_or(defaultIdealLength)},
          std::nullopt};
}

bool Leaf::isDecoration() const {
  return style_.isAccessibilityHidden || accessibleName().isEmpty();
}

Leaf::Change Leaf::adopt(const LeafStyle& style) {
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

QColor Leaf::color(const Color& color) const {
  return theme().color(color, style_.opacity);
}

void Leaf::paintEvent(QPaintEvent* event) {
  QPainter painter(this);
  if (style_.backdrop) painter.fillRect(event->rect(), theme().color(*style_.backdrop));
  paint(painter);
}

}  // namespace kestrune::ui::qt
