#include "ui/qt/mount/Surface.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include <QAccessible>
#include <QContextMenuEvent>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>

#include "ui/qt/leaves/FocusRing.h"
#include "ui/qt/leaves/ToolTip.h"
#include "ui/qt/theme/Theme.h"

namespace kestrune::ui::qt {
namespace {

constexpr double feedbackRadius = 6;

bool isActivationKey(int key) {
  return key == Qt::Key_Space || key == Qt::Key_Return || key == Qt::Key_Enter;
}

// A blurred shadow, as rounded rectangles of growing size that add up to its opacity under the surface.
void paintShadow(QPainter& painter, const QRectF& bounds, const BackgroundContent& surface, QColor color) {
  const int rings = static_cast<int>(std::ceil(surface.shadowRadius));
  if (rings <= 0) return;
  color.setAlphaF(color.alphaF() / static_cast<float>(rings));
  painter.setPen(Qt::NoPen);
  painter.setBrush(color);
  for (int ring = 0; ring < rings; ++ring) {
    const double grown = ring + 0.5;
    const QRectF rect = bounds.translated(0, surface.shadowOffsetY).adjusted(-grown, -grown, grown, grown);
    painter.drawRoundedRect(rect, surface.cornerRadius + grown, surface.cornerRadius + grown);
  }
}

}  // namespace

Surface::Surface(Theme& theme, QWidget* parent) : QWidget(parent), theme_(theme) {}

void Surface::setLook(const Look& look) {
  if (look == look_) return;
  look_ = look;
  picture_ = {};
  const int reach = static_cast<int>(std::ceil(look.background.shadowRadius));
  const int drop = static_cast<int>(std::ceil(look.background.shadowOffsetY));
  outset_ = reach == 0 ? QMargins() : QMargins(reach, reach, reach, reach + drop);
  update();
}

void Surface::setBehaviour(Behaviour behaviour) {
  const bool isReachable = static_cast<bool>(behaviour.onTap);
  setFocusPolicy(behaviour.takesFocus ? Qt::StrongFocus : Qt::NoFocus);
  setAttribute(Qt::WA_Hover, isReachable || behaviour.onHover);
  if (behaviour.toolTip != behaviour_.toolTip) setToolTip(plainToolTip(behaviour.toolTip));
  if (behaviour.accessibleName != behaviour_.accessibleName) setAccessibleName(behaviour.accessibleName);
  const bool selectionMoved = behaviour.isSelected != behaviour_.isSelected;
  behaviour_ = std::move(behaviour);
  if (selectionMoved) {
    QAccessible::State changed;
    changed.selected = true;
    QAccessibleStateChangeEvent event(this, changed);
    QAccessible::updateAccessibility(&event);
  }
}

void Surface::tap() {
  const auto action = behaviour_.onTap;  // the call may replace it
  if (action && isEnabled()) action();
}

void Surface::openContextMenu(QPoint onScreen) const {
  const auto action = behaviour_.onContextMenu;
  if (action) action(onScreen);
}

void Surface::setMarked(bool isMarked) {
  if (std::exchange(showsFocus_, isMarked) != isMarked) update();
}

void Surface::contextMenuEvent(QContextMenuEvent* event) {
  if (behaviour_.onContextMenu) {
    openContextMenu(event->globalPos());
  } else {
    event->ignore();
  }
}

bool Surface::event(QEvent* event) {
  if (event->type() == QEvent::Enter || event->type() == QEvent::Leave) {
    setInside(event->type() == QEvent::Enter);
  }
  return QWidget::event(event);
}

void Surface::setInside(bool inside) {
  isInside_ = inside;
  if (behaviour_.onTap) update();
  const auto action = behaviour_.onHover;
  if (action) action(inside);
}

void Surface::mousePressEvent(QMouseEvent* event) {
  if (!behaviour_.onTap || event->button() != Qt::LeftButton) {
    event->ignore();
    return;
  }
  isPressed_ = true;
  update();
}

void Surface::mouseReleaseEvent(QMouseEvent* event) {
  if (!isPressed_ || event->button() != Qt::LeftButton) {
    event->ignore();
    return;
  }
  isPressed_ = false;
  update();
  if (rect().contains(event->position().toPoint())) tap();
}

void Surface::keyPressEvent(QKeyEvent* event) {
  if (behaviour_.onTap && isActivationKey(event->key())) {
    tap();
  } else if (behaviour_.role == Role::row && (event->key() == Qt::Key_Down || event->key() == Qt::Key_Up)) {
    moveFocus(event->key() == Qt::Key_Down);
  } else {
    event->ignore();
  }
}

void Surface::moveFocus(bool forward) {
  const auto takesFocus = [](const QWidget& widget) {
    return (widget.focusPolicy() & Qt::TabFocus) != 0 && widget.isEnabled() && widget.isVisible();
  };
  QWidget* next = this;
  do {
    next = forward ? next->nextInFocusChain() : next->previousInFocusChain();
  } while (next != this && !takesFocus(*next));
  const auto* row = dynamic_cast<Surface*>(next);
  if (row != nullptr && row->behaviour_.role == Role::row) next->setFocus(Qt::TabFocusReason);
}

void Surface::focusInEvent(QFocusEvent* event) {
  showsFocus_ = isKeyboardReason(event->reason());
  update();
}

void Surface::focusOutEvent(QFocusEvent*) {
  showsFocus_ = false;
  update();
}

void Surface::paintEvent(QPaintEvent* event) {
  const BackgroundContent& surface = look_.background;
  const QColor fill = theme_.color(surface.fill, look_.opacity);
  const QColor border = theme_.color(surface.border, look_.opacity);
  const QColor shadow = theme_.color(surface.shadow, look_.opacity);
  const bool hasFeedback = behaviour_.onTap && (isInside_ || isPressed_ || showsFocus_);
  if (!hasFeedback && fill.alpha() == 0 && border.alpha() == 0 && shadow.alpha() == 0) return;

  QPainter painter(this);
  const QRectF bounds = QRectF(rect()).marginsRemoved(outset_);
  const double radius = surface.cornerRadius;
  // What a child uncovers is mostly well within the edges, and needs none of their shapes.
  const double edge = std::max(radius, surface.borderWidth);
  const QRectF within = bounds.adjusted(edge, edge, -edge, -edge);
  const auto isWithin = [&within](const QRect& part) { return within.contains(QRectF(part)); };
  const QRegion& damage = event->region();
  if (!hasFeedback && fill.alpha() == 255 && std::all_of(damage.begin(), damage.end(), isWithin)) {
    for (const QRect& part : damage) painter.fillRect(part, fill);
    return;
  }

  if (canBePieced()) {
    paintPieces(painter, damage);
  } else {
    paintLook(painter, bounds);
  }
  painter.setRenderHint(QPainter::Antialiasing);
  if (hasFeedback) paintFeedback(painter, bounds, radius > 0 ? radius : feedbackRadius);
}

int Surface::cornerSide() const {
  const int reach = std::max({outset_.left(), outset_.top(), outset_.right(), outset_.bottom()});
  return reach + static_cast<int>(std::ceil(look_.background.cornerRadius + look_.background.borderWidth)) +
         1;
}

bool Surface::canBePieced() const {
  const double scale = devicePixelRatioF();
  return std::min(width(), height()) > 2 * cornerSide() && std::floor(scale) == scale;
}

void Surface::paintLook(QPainter& painter, const QRectF& bounds) const {
  const BackgroundContent& surface = look_.background;
  const QColor fill = theme_.color(surface.fill, look_.opacity);
  const QColor border = theme_.color(surface.border, look_.opacity);
  const QColor shadow = theme_.color(surface.shadow, look_.opacity);
  const double radius = surface.cornerRadius;
  painter.setRenderHint(QPainter::Antialiasing);
  if (shadow.alpha() > 0) paintShadow(painter, bounds, surface, shadow);
  if (fill.alpha() > 0) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(fill);
    painter.drawRoundedRect(bounds, radius, radius);
  }
  if (border.alpha() > 0 && surface.borderWidth > 0) {
    const double inset = surface.borderWidth / 2;
    painter.setPen(QPen(border, surface.borderWidth));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(bounds.adjusted(inset, inset, -inset, -inset), radius - inset, radius - inset);
  }
}

void Surface::paintPieces(QPainter& painter, const QRegion& damage) {
  const double scale = devicePixelRatioF();
  const int corner = cornerSide();
  const int side = 2 * corner + 1;
  const bool isStale =
      picture_.isNull() || picture_.devicePixelRatio() != scale || pictureGeneration_ != theme_.generation();
  if (isStale) {
    picture_ = QPixmap(QSize(side, side) * scale);
    picture_.setDevicePixelRatio(scale);
    picture_.fill(Qt::transparent);
    QPainter drawing(&picture_);
    paintLook(drawing, QRectF(0, 0, side, side).marginsRemoved(outset_));
    pictureGeneration_ = theme_.generation();
  }
  const auto sourceSide = static_cast<double>(picture_.width());
  const double sourceCorner = corner * scale;
  const std::array<int, 4> xs{0, corner, width() - corner, width()};
  const std::array<int, 4> ys{0, corner, height() - corner, height()};
  const std::array<double, 4> source{0, sourceCorner, sourceSide - sourceCorner, sourceSide};
  const QColor fill = theme_.color(look_.background.fill, look_.opacity);
  // Part by part: clipping to one rectangle costs nothing, to many it is slow.
  for (const QRect& part : damage) {
    painter.setClipRect(part);
    for (std::size_t row = 0; row < 3; ++row) {
      for (std::size_t column = 0; column < 3; ++column) {
        const QRect piece(QPoint(xs.at(column), ys.at(row)),
                          QPoint(xs.at(column + 1) - 1, ys.at(row + 1) - 1));
        if (!piece.intersects(part)) continue;
        if (row == 1 && column == 1 && fill.alpha() == 255) {
          painter.fillRect(piece, fill);
          continue;
        }
        painter.drawPixmap(
            QRectF(piece), picture_,
            QRectF(source.at(column), source.at(row), source.at(column + 1) - source.at(column),
                   source.at(row + 1) - source.at(row)));
      }
    }
  }
  painter.setClipping(false);
}

void Surface::paintFeedback(QPainter& painter, const QRectF& bounds, double radius) const {
  if (isEnabled() && (isInside_ || isPressed_)) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(theme_.color(Color(ColorRole::primary, isPressed_ ? 0.10 : 0.05)));
    painter.drawRoundedRect(bounds, radius, radius);
  }
  if (showsFocus_) paintFocusRing(painter, theme_, bounds, radius);
}

}  // namespace kestrune::ui::qt
