#include "ui/qt/leaves/SwitchLeaf.h"

#include <QKeyEvent>
#include <QPainter>

#include "ui/qt/theme/Theme.h"

namespace kestrune::ui::qt {
namespace {

constexpr double trackWidth = 34;
constexpr double trackHeight = 20;
constexpr double knobInset = 2;
constexpr double slideSeconds = 0.15;

}  // namespace

SwitchLeaf::SwitchLeaf(Theme& theme, QWidget* parent)
    : ControlLeaf(theme, parent, QAccessible::CheckBox), knob_(theme.animations(), [this] { update(); }) {}

bool SwitchLeaf::show(const Content& content, const LeafStyle& style) {
  adopt(style);
  const auto& next = std::get<SwitchContent>(content);
  const bool wasOn = content_.isOn;
  content_ = next;
  if (!isShown_ || next.isOn != wasOn) follow(next.isOn);
  isShown_ = true;
  return false;
}

LeafMetrics SwitchLeaf::measure(Proposal) {
  return {{trackWidth, trackHeight}, std::nullopt};
}

void SwitchLeaf::follow(bool isOn) {
  knob_.set(isOn ? 1 : 0, isShown_ && canAnimate(*this) ? slideSeconds : 0);
  update();
  QAccessible::State checked;
  checked.checked = true;
  QAccessibleStateChangeEvent event(this, checked);
  QAccessible::updateAccessibility(&event);
}

void SwitchLeaf::toggle() {
  if (!isEnabled()) return;
  content_.isOn = !content_.isOn;
  follow(content_.isOn);
  const auto onChange = content_.onChange;  // the call may replace it
  if (onChange) onChange(content_.isOn);
}

void SwitchLeaf::release(QPointF place) {
  if (rect().contains(place.toPoint())) toggle();
}

void SwitchLeaf::keyPressEvent(QKeyEvent* event) {
  const int key = event->key();
  if (key != Qt::Key_Space && key != Qt::Key_Return && key != Qt::Key_Enter) {
    event->ignore();
    return;
  }
  showFocus();
  toggle();
}

void SwitchLeaf::paint(QPainter& painter) {
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  const QRectF track((width() - trackWidth) / 2, (height() - trackHeight) / 2, trackWidth, trackHeight);
  const QColor off = color(Color(ColorRole::primary, theme().isDark() ? 0.22 : 0.18));
  painter.setBrush(mixed(off, color(ColorRole::accent), knob_.value()));
  painter.drawRoundedRect(track, trackHeight / 2, trackHeight / 2);
  const double side = trackHeight - 2 * knobInset;
  const double travel = trackWidth - trackHeight;
  const QRectF knob(track.left() + knobInset + knob_.value() * travel, track.top() + knobInset, side, side);
  paintKnob(painter, knob, 0.16);
  paintFocus(painter, trackHeight / 2);
}

}  // namespace kestrune::ui::qt
