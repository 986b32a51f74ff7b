#include "ui/qt/Popover.h"

#include <QCursor>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QScreen>

#include "ui/qt/mount/ViewHost.h"
#include "ui/qt/theme/Theme.h"

namespace kestrune::ui::qt {
namespace {

// Wide enough for the longest row for any figures, so that the window doesn't change with them.
constexpr int contentWidth = 320;
constexpr int edge = 1;
constexpr int gap = 4;
// A click on the tray item closes the window by deactivating it; that same click must not reopen it.
constexpr qint64 reopenMilliseconds = 250;

bool canPlaceWindows() {
  return !QGuiApplication::platformName().startsWith(QStringLiteral("wayland"));
}

}  // namespace

Popover::Popover(const ViewContext& context, Theme& theme, MenuBarPopover::Commands commands)
    : QWidget(nullptr, canPlaceWindows() ? Qt::Popup | Qt::FramelessWindowHint : Qt::Dialog), theme_(theme) {
  setObjectName(QStringLiteral("popover"));
  setWindowTitle(QStringLiteral("Kestrune"));
  const auto thenClose = [this](std::function<void()> command) {
    return [this, command = std::move(command)] {
      hide();
      command();
    };
  };
  const MenuBarPopover::Commands closing{thenClose(std::move(commands.openMainWindow)),
                                         thenClose(std::move(commands.terminate))};
  host_ = new ViewHost(context.loop, theme, component<MenuBarPopover>([context, closing] {
                         return std::make_shared<MenuBarPopover>(context, closing);
                       }),
                       this, Root::Sizing::heightToWidth);
}

void Popover::toggle(const QRect& anchor) {
  if (isVisible()) {
    hide();
    return;
  }
  if (sinceClosed_.isValid() && sinceClosed_.elapsed() < reopenMilliseconds) return;
  fitContent();
  if (canPlaceWindows()) moveBeside(anchor.isEmpty() ? QRect(QCursor::pos(), QSize(1, 1)) : anchor);
  show();
  raise();
  activateWindow();
  windowHandle()->installEventFilter(this);
}

bool Popover::eventFilter(QObject* watched, QEvent* event) {
  // Otherwise keys go to the program that has the focus; only a window on screen can grab them.
  const bool isOnScreen = event->type() == QEvent::Expose && windowHandle()->isExposed();
  if (isOnScreen && canPlaceWindows()) windowHandle()->setKeyboardGrabEnabled(true);
  return QWidget::eventFilter(watched, event);
}

void Popover::fitContent() {
  const int height = host_->heightForWidth(contentWidth);
  host_->setGeometry(edge, edge, contentWidth, height);
  const QSize size(contentWidth + 2 * edge, height + 2 * edge);
  if (size == this->size()) return;
  const int bottom = geometry().bottom();
  const bool growsUpwards = isVisible() && canPlaceWindows() && bottom > screen()->geometry().center().y();
  setFixedSize(size);
  if (growsUpwards) move(x(), bottom - size.height() + 1);
}

void Popover::moveBeside(QRect anchor) {
  const QScreen* screen = QGuiApplication::screenAt(anchor.center());
  if (screen == nullptr) screen = QGuiApplication::primaryScreen();
  const QRect room = screen->availableGeometry();
  const bool below = anchor.center().y() < screen->geometry().center().y();
  const int top = below ? anchor.bottom() + 1 + gap : anchor.top() - gap - height();
  const int left = anchor.center().x() - width() / 2;
  move(std::clamp(left, room.left(), std::max(room.left(), room.right() + 1 - width())),
       std::clamp(top, room.top(), std::max(room.top(), room.bottom() + 1 - height())));
}

bool Popover::event(QEvent* event) {
  if (event->type() == QEvent::LayoutRequest) fitContent();
  if (event->type() == QEvent::WindowDeactivate) hide();
  return QWidget::event(event);
}

void Popover::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape) {
    hide();
  } else {
    QWidget::keyPressEvent(event);
  }
}

void Popover::hideEvent(QHideEvent* event) {
  sinceClosed_.start();
  QWidget::hideEvent(event);
}

void Popover::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(rect(), theme_.color(ColorRole::window));
  painter.fillRect(rect(), theme_.color(Color(ColorRole::primary, 0.18)));
}

}  // namespace kestrune::ui::qt
