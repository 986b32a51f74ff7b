#pragma once

#include <functional>
#include <optional>

#include <QSystemTrayIcon>

#include "platform/desktop/EmbeddingTray.h"
#include "platform/desktop/StatusNotifierHosts.h"
#include "providers/CPUProvider.h"
#include "runtime/Published.h"
#include "texts/LocaleFormats.h"

class QMenu;

namespace kestrune::ui::qt {

// The program's item in the desktop's tray: a picture of the load that the menu bar label shows. It appears
// with the first tray, which may be at any time. Main thread.
class TrayItem {
 public:
  // `menu` opens on a secondary click; `onClick` is called on a primary one with the item's place on the
  // screen, or an empty rectangle if the desktop doesn't report it. All must outlive the item.
  TrayItem(const CPUProvider& cpu, LocaleFormats& formats, QMenu* menu,
           std::function<void(const QRect& item)> onClick);
  TrayItem(const TrayItem&) = delete;
  TrayItem& operator=(const TrayItem&) = delete;

  // True once a tray has appeared, even if it is gone by now.
  bool hasAppeared() const { return icon_.has_value(); }

 private:
  void appear();
  void show();

  const CPUProvider& cpu_;
  LocaleFormats& formats_;
  QMenu* menu_;
  std::function<void(const QRect& item)> onClick_;
  // Qt chooses its protocol when the first one is created, by the trays that exist then, and for good.
  std::optional<QSystemTrayIcon> icon_;
  desktop::EmbeddingTray embedding_;
  std::optional<desktop::StatusNotifierHosts> hosts_;
  std::string shownLoad_;
  // The context of queued calls: they are dropped with the item.
  QObject pending_;
  Dependencies dependencies_;
};

// The picture of a load from 0 to 100 percent, in all sizes that trays request.
QIcon trayPicture(int percent);

}  // namespace kestrune::ui::qt
