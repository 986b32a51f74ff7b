#pragma once

#include <memory>
#include <optional>

#include <QMenu>

#include "platform/Application.h"
#include "platform/Platform.h"
#include "platform/desktop/DesktopAppearance.h"
#include "texts/Catalogue.h"
#include "ui/qt/Clipboard.h"
#include "ui/qt/MainWindow.h"
#include "ui/qt/Popover.h"
#include "ui/qt/TrayItem.h"
#include "ui/qt/theme/Theme.h"

namespace kestrune::ui::qt {

// Posted once, on the program's notification centre, before the program ends, whatever ends it.
inline constexpr std::string_view willTerminateNotification = "Kestrune.willTerminate";

// The running program: one environment, one main window, one item in the tray. Creating it starts the
// sampling. Needs a QApplication. Main thread.
class KestruneApp final : public platform::Application {
 public:
  // Both must outlive it.
  KestruneApp(MainLoop& loop, const platform::Platform& platform);
  ~KestruneApp() override;
  KestruneApp(const KestruneApp&) = delete;
  KestruneApp& operator=(const KestruneApp&) = delete;

  // False where the program runs without anyone who could see it.
  static bool hasDisplay();

  void openMainWindow();
  // Without a window in the way: in the tray, or else, when none has turned up within some seconds, with the
  // main window minimised.
  void openQuietly();
  // The popover, made at its first use.
  Popover& popover();
  // Ends the program at the next turn of Qt's event loop.
  void terminate() override;
  // Keeps the minutes since the last periodic save, for when the process may end without another word.
  void saveDay();
  void openNewInstance() override { wantsNewInstance_ = true; }
  // Whether the program is to be started anew once it has ended.
  bool wantsNewInstance() const { return wantsNewInstance_; }

  MainWindow& window() { return *window_; }
  NotificationCenter& notifications() { return notifications_; }
  AppEnvironment& environment() { return env_; }

 private:
  void announceEnd();
  void followAppearance();
  ViewContext context();

  NotificationCenter notifications_;
  Preferences preferences_;
  Clipboard clipboard_;
  Shell shell_;
  LocaleFormats formats_;
  Catalogue catalogue_;
  AppEnvironment env_;
  std::optional<desktop::DesktopAppearance> appearance_;
  Theme theme_;
  const bool isSandboxed_;
  MainLoop& loop_;
  platform::Workspace& workspace_;
  NotificationCenter::Subscription onTerminate_;
  std::unique_ptr<MainWindow> window_;
  std::unique_ptr<Popover> popover_;
  QMenu trayMenu_;
  std::unique_ptr<TrayItem> tray_;
  bool hasOwnPalette_ = false;
  bool hasOpenedWindow_ = false;
  bool hasAnnouncedEnd_ = false;
  bool wantsNewInstance_ = false;
  QObject connections_;  // ends the connections to the application with it
};

}  // namespace kestrune::ui::qt
