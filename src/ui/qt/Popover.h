#pragma once

#include <QElapsedTimer>
#include <QWidget>

#include "ui/components/ViewContext.h"
#include "ui/window/MenuBarPopover.h"

namespace kestrune::ui::qt {

class Theme;
class ViewHost;

// The small window beside the item in the tray. It closes at Escape and as soon as the user turns to
// something else. Where the desktop doesn't let a program place a window, it is a plain one. Main thread.
class Popover final : public QWidget {
 public:
  // All must outlive the window.
  Popover(const ViewContext& context, Theme& theme, MenuBarPopover::Commands commands);

  // Opens beside `anchor`, in global coordinates, or where the pointer is if that is empty; closes if it is
  // open.
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
