#include "ui/qt/mount/ViewHost.h"

#include <QEvent>
#include <QWindow>

#include "ui/qt/theme/Theme.h"

namespace kestrune::ui::qt {
namespace {

Inherited surroundings() {
  Inherited inherited;
  inherited.backdrop = Color(ColorRole::window);
  return inherited;
}

}  // namespace

HostContext::HostContext(MainLoop& loop, Theme& theme)
    : scheduler(loop, [this] { layOutAll(); }), context{theme, scheduler, breathing, {}} {}

void HostContext::layOutAll() {
  // Laying one area out may add to the list, so no iterator is held.
  std::size_t done = 0;
  while (done < context.roots.size()) context.roots[done++]->layOut();
}

ViewHost::ViewHost(MainLoop& loop, Theme& theme, View view, QWidget* parent, Sizing sizing)
    : HostContext(loop, theme),
      Root(HostContext::context, sizing, parent),
      view_(std::make_unique<const View>(std::move(view))),
      mounted_(std::make_unique<MountedView>(HostContext::context, *this, *this, *view_, surroundings())),
      styledFor_(theme.generation()) {
  setContent(mounted_.get());
}

ViewHost::~ViewHost() {
  setContent(nullptr);
  mounted_.reset();
  // Panes may be waiting to be deleted; they must go before what they share.
  qDeleteAll(findChildren<QWidget*>(Qt::FindDirectChildrenOnly));
}

void ViewHost::setView(View view) {
  auto next = std::make_unique<const View>(std::move(view));
  const auto old = std::exchange(view_, std::move(next));
  if (mounted_->canShow(*view_)) {
    mounted_->update(*view_, surroundings());
  } else {
    setContent(nullptr);
    mounted_ = std::make_unique<MountedView>(HostContext::context, *this, *this, *view_, surroundings());
    setContent(mounted_.get());
    noteStructureChange();
  }
  layOutAll();
}

void ViewHost::flush() {
  scheduler.flush();
}

bool ViewHost::event(QEvent* event) {
  Theme& theme = HostContext::context.theme;
  switch (event->type()) {
    case QEvent::Show:
    case QEvent::Hide:
      followVisibility();
      break;
    case QEvent::PaletteChange:
    case QEvent::FontChange:
    case QEvent::StyleChange:
      theme.refresh();  // refreshed once, by whichever window gets the event first
      if (mounted_ && std::exchange(styledFor_, theme.generation()) != theme.generation()) {
        mounted_->restyle(surroundings());
        layOutAll();
      }
      break;
    default:
      break;
  }
  return Root::event(event);
}

bool ViewHost::eventFilter(QObject* watched, QEvent* event) {
  const bool handled = Root::eventFilter(watched, event);
  if (event->type() == QEvent::Expose) followVisibility();
  return handled;
}

void ViewHost::followVisibility() {
  QWindow* window = this->window()->windowHandle();
  if (window != watchedWindow_) {
    if (watchedWindow_) watchedWindow_->removeEventFilter(this);
    watchedWindow_ = window;
    if (window != nullptr) window->installEventFilter(this);
  }
  // A minimised or covered window is visible to Qt but not exposed.
  const bool isSeen = isVisible() && (window == nullptr || window->isExposed() || !window->isVisible());
  scheduler.setActive(isSeen);
  breathing.setActive(isSeen && areAnimationsWanted(*this));
}

}  // namespace kestrune::ui::qt
