#pragma once

#include <QElapsedTimer>
#include <QWidget>

#include "ui/components/ViewContext.h"
#include "ui/window/MenuBarPopover.h"

namespace kestrune::ui::qt {

class Theme;
class ViewHost;

// The small window beside the tray item. It closes on Escape and when it is deactivated. If the desktop
// doesn't let programs place their windows, it is an ordinary one. Main thread.
class Popover final : public QWidget {
 public:
  // All must outlive the window.
  Popover(const ViewContext& context, Theme& theme, MenuBarPopover::Commands commands);

  // Opens beside `anchor` (in global coordinates; if empty, at the pointer), or closes if it is open.
  void toggle(const QRect& anchor);

  ViewHost& host() { return *host_; }

 protected:
  bool event(QEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void hideEvent(QHideEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  void fitContent();
  void moveBeside(QRect anchor);

  Theme& theme_;
  ViewHost* host_;
  QElapsedTimer sinceClosed_;
};

}  // namespace kestrune::ui::qt
