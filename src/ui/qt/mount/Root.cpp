#include "ui/qt/mount/Root.h"

#include <unordered_map>
#include <utility>

#include <QHash>
#include <QPaintEvent>
#include <QPainter>

#include "ui/qt/mount/Mounted.h"
#include "ui/qt/theme/Theme.h"

namespace kestrune::ui::qt {
namespace {

// Brings widgets with the same parent into this order, for what covers what and for assistive tools. Raising
// repaints a widget, so the leading ones that are in order already are left alone.
void stack(const std::vector<QWidget*>& widgets) {
  struct Level {
    QHash<const QObject*, qsizetype> places;
    qsizetype last = -1;
    bool isBroken = false;
  };
  std::unordered_map<const QWidget*, Level> levels;
  for (QWidget* widget : widgets) {
    Level& level = levels[widget->parentWidget()];
    if (level.places.isEmpty()) {
      const QObjectList& siblings = widget->parentWidget()->children();
      for (qsizetype i = 0; i < siblings.size(); ++i) level.places.insert(siblings[i], i);
    }
    const qsizetype place = level.places.value(widget);
    level.isBroken = level.isBroken || place < level.last;
    level.last = place;
    if (level.isBroken) widget->raise();
  }
}

void chainFocus(const std::vector<QWidget*>& widgets) {
  QWidget* previous = nullptr;
  for (QWidget* widget : widgets) {
    if ((widget->focusPolicy() & Qt::TabFocus) == 0) continue;
    if (previous != nullptr) QWidget::setTabOrder(previous, widget);
    previous = widget;
  }
}

}  // namespace

Root::Root(MountContext& context, Sizing sizing, QWidget* parent)
    : QWidget(parent), context_(context), sizing_(sizing) {
  setAttribute(Qt::WA_OpaquePaintEvent);
  if (sizing == Sizing::heightToWidth) {
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
  }
  context_.roots.push_back(this);
}

Root::~Root() {
  std::erase(context_.roots, this);
}

void Root::setFill(const std::optional<Color>& fill) {
  fill_ = fill;
  setAttribute(Qt::WA_OpaquePaintEvent, fill.has_value());
}

int Root::heightForWidth(int width) const {
  if (content_ == nullptr) return 0;
  return qRound(content_->node().measure({static_cast<double>(width), std::nullopt}).height);
}

void Root::layOut(bool always) {
  if (content_ == nullptr || (!always && !content_->node().needsLayout() && !structureChanged_)) return;
  const auto offeredWidth = static_cast<double>(width());
  if (sizing_ == Sizing::heightToWidth) {
    const int wanted = heightForWidth(width());
    if (std::exchange(wantedHeight_, wanted) != wanted) updateGeometry();
    content_->node().place({0, 0, offeredWidth, static_cast<double>(wanted)}, {offeredWidth, std::nullopt});
  } else {
    content_->node().place({0, 0, offeredWidth, static_cast<double>(height())});
  }
  content_->applyGeometry({});
  if (std::exchange(structureChanged_, false)) {
    std::vector<QWidget*> widgets;
    content_->collectWidgets(widgets);
    stack(widgets);
    chainFocus(widgets);
  }
}

void Root::resizeEvent(QResizeEvent*) {
  layOut(true);
}

void Root::paintEvent(QPaintEvent* event) {
  if (!fill_) return;
  QPainter painter(this);
  painter.fillRect(event->rect(), context_.theme.color(*fill_));
}

}  // namespace kestrune::ui::qt
