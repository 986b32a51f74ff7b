#include <QPaintEvent>
#include <QPainter>

#include "ui/qt/MountedView.h"
#include "ui/qt/Theme.h"

namespace kestrune::ui::qt {

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

void Root::setBackdrop(const Color& color) {
  backdrop_ = color;
  update();
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
    QWidget* lastStop = nullptr;
    content_->restack(lastStop);
  }
}

void Root::resizeEvent(QResizeEvent*) {
  layOut(true);
}

void Root::paintEvent(QPaintEvent* event) {
  QPainter painter(this);
  painter.fillRect(event->rect(), context_.theme.color(backdrop_));
}

}  // namespace kestrune::ui::qt
