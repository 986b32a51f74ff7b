#include "ui/qt/mount/Panes.h"

#include <QPainter>
#include <QResizeEvent>

#include "ui/qt/theme/Theme.h"

namespace kestrune::ui::qt {
namespace {

class HairlineHandle final : public QSplitterHandle {
 public:
  HairlineHandle(Theme& theme, QSplitter* parent) : QSplitterHandle(Qt::Horizontal, parent), theme_(theme) {}

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    painter.fillRect(rect(), theme_.color(ColorRole::window));
    painter.fillRect(rect(), theme_.color(Color(ColorRole::primary, 0.1)));
  }

 private:
  Theme& theme_;
};

}  // namespace

ScrollPane::ScrollPane(MountContext& context, QWidget* parent)
    : QScrollArea(parent),
      content_(new Root(context, Root::Sizing::heightToWidth, nullptr)),
      bar_(new ThinScrollBar(context.theme, *verticalScrollBar(), this)) {
  setFrameShape(QFrame::NoFrame);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setWidgetResizable(true);
  setWidget(content_);
}

void ScrollPane::resizeEvent(QResizeEvent* event) {
  QScrollArea::resizeEvent(event);
  bar_->place();
}

SplitPane::SplitPane(MountContext& context, const SplitContent& split, QWidget* parent)
    : QSplitter(Qt::Horizontal, parent),
      theme_(context.theme),
      sidebar_(new Root(context, Root::Sizing::fill, nullptr)),
      detail_(new Root(context, Root::Sizing::fill, nullptr)),
      idealSidebarWidth_(qRound(split.sidebarIdealWidth)) {
  setHandleWidth(1);
  setChildrenCollapsible(false);
  sidebar_->setMinimumWidth(qRound(split.sidebarMinWidth));
  addWidget(sidebar_);
  addWidget(detail_);
  setStretchFactor(0, 0);
  setStretchFactor(1, 1);
}

QSplitterHandle* SplitPane::createHandle() {
  return new HairlineHandle(theme_, this);
}

void SplitPane::resizeEvent(QResizeEvent* event) {
  QSplitter::resizeEvent(event);
  if (std::exchange(hasSizes_, true)) return;
  setSizes({idealSidebarWidth_, event->size().width() - idealSidebarWidth_ - handleWidth()});
}

}  // namespace kestrune::ui::qt
