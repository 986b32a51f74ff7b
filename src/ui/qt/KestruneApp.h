#pragma once

#include <memory>
#include <optional>

#include <QClipboard>
#include <QGuiApplication>
#include <QMenu>

#include "platform/Application.h"
#include "platform/Pasteboard.h"
#include "platform/Platform.h"
#include "platform/desktop/DesktopAppearance.h"
#include "texts/Catalogue.h"
#include "ui/qt/MainWindow.h"
#include "ui/qt/Popover.h"
#include "ui/qt/TrayItem.h"
#include "ui/qt/theme/Theme.h"

namespace kestrune::ui::qt {

// The desktop's clipboard.
class Clipboard final : public platform::Pasteboard {
 public:
  void setText(const std::string& text) override {
    QGuiApplication::clipboard()->setText(QString::fromStdString(text));
  }
};

// Posted once on the program's notification centre before the program ends, for any reason.
inline constexpr std::string_view willTerminateNotification = "Kestrune.willTerminate";

// The running program: one environment, one main window, one tray item. Creating it starts sampling. Needs a
// QApplication. Main thread.
class KestruneApp final : public platform::Application {
 public:
  // Both must outlive it.
  KestruneApp(MainLoop& loop, const platform::Platform& platform);
  ~KestruneApp() override;
  KestruneApp(const KestruneApp&) = delete;
  KestruneApp& operator=(const KestruneApp&) = delete;

  // False if the program runs without a display.
  static bool hasDisplay();

  void openMainWindow();
  // Starts without showing a window: in the tray or, if no tray appears within some seconds, with the main
  // window minimised.
  void openQuietly();
  // The popover, created on first use.
  Popover& popover();
  // Ends the program at the next iteration of Qt's event loop.
  void terminate() override;
  // Saves the minutes since the last periodic save, in case the process ends without warning.
  void saveDay();
  void openNewInstance() override { wantsNewInstance_ = true; }
  // True if the program should be restarted once it has ended.
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
  // The context of the connections to the application: they end with it.
  QObject connections_;
};

}  // namespace kestrune::ui::qt
