#include "ui/qt/KestruneApp.h"

#include <chrono>

#include <QApplication>
#include <QSessionManager>
#include <QTimer>

#include "platform/desktop/SessionBus.h"
#include "settings/Language.h"
#include "ui/qt/leaves/LeafAccessibility.h"
#include "ui/qt/mount/Surface.h"
#include "ui/qt/theme/DesktopPalette.h"

namespace kestrune::ui::qt {
namespace {

// The language of the texts with the region that the C library would use for numbers, such as "es_US".
std::string formatLocale(const std::string& language, platform::ProcessEnvironment& environment) {
  std::string locale;
  for (const char* name : {"LC_ALL", "LC_NUMERIC", "LANG"}) {
    locale = environment.variable(name).value_or("");
    if (!locale.empty()) break;
  }
  const auto region = locale.find('_');
  return region == std::string::npos ? language : language + locale.substr(region);
}

// True if the environment contains the variable, with any value. Samplers never use the answer.
bool isSandboxed(platform::ProcessEnvironment& environment) {
  return !environment.isEmpty() && environment.variable("APP_SANDBOX_CONTAINER_ID").has_value();
}

Shell shellOf(platform::Application& application, platform::Pasteboard& pasteboard,
              const platform::Platform& platform, const Preferences& preferences) {
  const QString version = QCoreApplication::applicationVersion();
  return {.application = application,
          .loginItem = platform.loginItem,
          .pasteboard = pasteboard,
          .language = currentLanguage(preferences, platform.facts.languages()),
          .version = (version.isEmpty() ? QStringLiteral("1") : version).toStdString() + " (1)",
          .systemVersion = platform.facts.operatingSystemVersion()};
}

QIcon programIcon(Theme& theme) {
  QIcon icon;
  for (const int size : {16, 32, 64, 128}) icon.addPixmap(theme.image("kestrune", size, size, Qt::black, 1));
  return icon;
}

}  // namespace

KestruneApp::KestruneApp(MainLoop& loop, const platform::Platform& platform)
    : preferences_(platform.preferences),
      shell_(shellOf(*this, clipboard_, platform, preferences_)),
      formats_(formatLocale(shell_.language, platform.environment)),
      catalogue_(shell_.language),
      env_(loop, platform, {.preferences = preferences_, .texts = catalogue_, .formats = formats_}),
      theme_(catalogue_),
      isSandboxed_(isSandboxed(platform.environment)),
      loop_(loop),
      workspace_(platform.workspace),
      onTerminate_(notifications_.observe(std::string(willTerminateNotification),
                                          [this](const std::any&) { saveDay(); })) {
  if (auto bus = desktop::sessionBus()) {
    appearance_.emplace(std::move(*bus), [this] { followAppearance(); });
    followAppearance();
    theme_.refresh();
  }
  installSurfaceAccessibility();
  installLeafAccessibility();
  QApplication::setWindowIcon(programIcon(theme_));
  window_ = std::make_unique<MainWindow>(context(), theme_, [this] { terminate(); });

  const auto text = [this](const char* words) { return theme_.text(key(words)); };
  trayMenu_.addAction(text("Open main window"), &connections_, [this] { openMainWindow(); });
  trayMenu_.addSeparator();
  trayMenu_.addAction(text("Quit Kestrune"), &connections_, [this] { terminate(); });
  if (hasDisplay()) {
    tray_ = std::make_unique<TrayItem>(*env_.cpu, formats_, &trayMenu_,
                                       [this](const QRect& item) { popover().toggle(item); });
  }

  QObject::connect(qApp, &QGuiApplication::applicationStateChanged, &connections_,
                   [this](Qt::ApplicationState state) {
                     if (state == Qt::ApplicationActive) notifications_.post(didBecomeActiveNotification);
                   });
  QObject::connect(qApp, &QCoreApplication::aboutToQuit, &connections_, [this] { announceEnd(); });
  // The session is about to end, unless another program cancels that. A program that starts with the session
  // need not be restarted by the session manager.
  QObject::connect(
      qApp, &QGuiApplication::commitDataRequest, &connections_,
      [this](QSessionManager& manager) {
        saveDay();
        if (shell_.loginItem.isEnabled()) manager.setRestartHint(QSessionManager::RestartNever);
      },
      Qt::DirectConnection);
}

KestruneApp::~KestruneApp() = default;

ViewContext KestruneApp::context() {
  return {loop_, env_, preferences_, notifications_, formats_, workspace_, shell_, isSandboxed_};
}

Popover& KestruneApp::popover() {
  if (!popover_) {
    MenuBarPopover::Commands commands{[this] { openMainWindow(); }, [this] { terminate(); }};
    popover_ = std::make_unique<Popover>(context(), theme_, std::move(commands));
  }
  return *popover_;
}

void KestruneApp::openMainWindow() {
  hasOpenedWindow_ = true;
  window_->bringForward();
}

void KestruneApp::openQuietly() {
  // At the start of a session the panel may start later than this program.
  constexpr std::chrono::seconds trayTimeout{10};
  if (!hasDisplay()) return;
  QTimer::singleShot(trayTimeout, &connections_, [this] {
    if (!tray_->hasAppeared() && !hasOpenedWindow_) window_->showMinimized();
  });
}

void KestruneApp::followAppearance() {
  if (appearance_->current() == desktop::Appearance() && !hasOwnPalette_) return;
  hasOwnPalette_ = appearance_->current() != desktop::Appearance();
  // Dropping the program's own palette brings back the theme's.
  QApplication::setPalette(QPalette());
  if (hasOwnPalette_) {
    QApplication::setPalette(desktopPalette(QApplication::palette(), appearance_->current()));
  }
}

bool KestruneApp::hasDisplay() {
  return QGuiApplication::platformName() != QStringLiteral("offscreen");
}

void KestruneApp::terminate() {
  announceEnd();
  QCoreApplication::quit();
}

void KestruneApp::saveDay() {
  env_.recorder->save(env_.recorder->current);
}

void KestruneApp::announceEnd() {
  if (std::exchange(hasAnnouncedEnd_, true)) return;
  notifications_.post(willTerminateNotification);
}

}  // namespace kestrune::ui::qt
