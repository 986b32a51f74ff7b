#include "ui/qt/mount/ThinScrollBar.h"

#include <QPainter>
#include <QStyleOptionSlider>

#include "ui/qt/theme/Theme.h"

namespace kestrune::ui::qt {
namespace {

constexpr int barWidth = 12;
constexpr double thumbWidth = 5;
constexpr double thumbMargin = 3;
constexpr double restingOpacity = 0.22;
constexpr double hoveredOpacity = 0.45;

}  // namespace

ThinScrollBar::ThinScrollBar(Theme& theme, QScrollBar& followed, QWidget* parent)
    : QScrollBar(Qt::Vertical, parent), theme_(theme), followed_(followed) {
  setAttribute(Qt::WA_OpaquePaintEvent, false);
  setContextMenuPolicy(Qt::NoContextMenu);
  connect(&followed, &QScrollBar::rangeChanged, this, &ThinScrollBar::follow);
  connect(&followed, &QScrollBar::valueChanged, this, &QScrollBar::setValue);
  connect(this, &QScrollBar::valueChanged, &followed, &QScrollBar::setValue);
  follow();
}

void ThinScrollBar::follow() {
  setRange(followed_.minimum(), followed_.maximum());
  setPageStep(followed_.pageStep());
  setSingleStep(followed_.singleStep());
  setVisible(followed_.maximum() > followed_.minimum());
}

void ThinScrollBar::place() {
  const QWidget* area = parentWidget();
  setGeometry(area->width() - barWidth, 0, barWidth, area->height());
  follow();
}

QSize ThinScrollBar::sizeHint() const {
  return {barWidth, 0};
}

void ThinScrollBar::paintEvent(QPaintEvent*) {
  QStyleOptionSlider option;
  initStyleOption(&option);
  const QRect thumb =
      style()->subControlRect(QStyle::CC_ScrollBar, &option, QStyle::SC_ScrollBarSlider, this);
  const QRectF shape(width() - thumbWidth - thumbMargin, thumb.top() + thumbMargin, thumbWidth,
                     thumb.height() - 2 * thumbMargin);
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  const bool isHeld = underMouse() || isSliderDown();
  painter.setBrush(theme_.color(Color(ColorRole::primary, isHeld ? hoveredOpacity : restingOpacity)));
  painter.drawRoundedRect(shape, thumbWidth / 2, thumbWidth / 2);
}

void ThinScrollBar::enterEvent(QEnterEvent* event) {
  QScrollBar::enterEvent(event);
  update();
}

void ThinScrollBar::leaveEvent(QEvent* event) {
  QScrollBar::leaveEvent(event);
  update();
}

}  // namespace kestrune::ui::qt
