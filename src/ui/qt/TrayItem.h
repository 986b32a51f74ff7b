#pragma once

#include <functional>
#include <optional>

#include <QSystemTrayIcon>

#include "platform/desktop/EmbeddingTray.h"
#include "platform/desktop/StatusNotifierHosts.h"
#include "providers/CPUProvider.h"
#include "runtime/MainLoop.h"
#include "runtime/Published.h"
#include "texts/LocaleFormats.h"

class QMenu;

namespace kestrune::ui::qt {

// The program's item in the desktop's tray: a picture of the load that the menu bar label shows. It comes
// with the first tray, which may turn up at any time. Main thread.
class TrayItem {
 public:
  // `menu` opens at the secondary click, `onClick` is called at the primary one, with the place of the item
  // on the screen, or nothing where the desktop doesn't tell. All must outlive the item.
  TrayItem(const CPUProvider& cpu, LocaleFormats& formats, QMenu* menu,
           std::function<void(const QRect& item)> onClick);
  TrayItem(const TrayItem&) = delete;
  TrayItem& operator=(const TrayItem&) = delete;

  // A tray has turned up. It may be gone by now.
  bool hasComeUp() const { return icon_.has_value(); }

 private:
  void comeUp();
  void show();

  const CPUProvider& cpu_;
  LocaleFormats& formats_;
  QMenu* menu_;
  std::function<void(const QRect& item)> onClick_;
  // Its protocol is settled for good when the first one is made, by what trays there are then.
  std::optional<QSystemTrayIcon> icon_;
  desktop::EmbeddingTray embedding_;
  std::optional<desktop::StatusNotifierHosts> hosts_;
  std::string shownLoad_;
  QObject pending_;  // what is still to be called, ends with the item
  Dependencies dependencies_;
};

// The tray's picture of a load from 0 to 100 percent, in all sizes that trays ask for.
QIcon trayPicture(int percent);

}  // namespace kestrune::ui::qt
