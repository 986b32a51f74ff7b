#include <cstdio>
#include <cstdlib>

#include <QApplication>
#include <QFile>
#include <QSocketNotifier>
#include <unistd.h>

#include "Assembly.h"
#include "platform/desktop/SingleInstance.h"
#include "platform/linux/program/TerminationSignals.h"
#include "ui/window/MainTab.h"

namespace {

using namespace kestrune;

// Set while the program runs.
ui::qt::KestruneApp* app = nullptr;

// The program samples even without a display.
void chooseQtPlatform() {
  const auto isSet = [](const char* name) { return !qEnvironmentVariableIsEmpty(name); };
  if (isSet("DISPLAY") || isSet("WAYLAND_DISPLAY") || isSet("QT_QPA_PLATFORM")) return;
  std::fputs("kestrune: no display; running without a window\n", stderr);
  qputenv("QT_QPA_PLATFORM", "offscreen");
}

QtMessageHandler writeMessage = nullptr;

// Qt exits the process when the display connection is lost. On X11 it calls exit(); on Wayland it calls
// _exit() after a last warning.
void saveWhenDisplayIsLost() {
  std::atexit([] { app->saveDay(); });
  // Kept before our handler can be called.
  writeMessage = qInstallMessageHandler(nullptr);
  qInstallMessageHandler([](QtMsgType type, const QMessageLogContext& context, const QString& text) {
    writeMessage(type, context, text);
    if (text.startsWith(QLatin1String("The Wayland connection"))) app->saveDay();
  });
}

// True if the session started the program, not a person. The variable is removed so that a restart, or a
// program opened from here, doesn't inherit it.
bool startsQuietly() {
  const bool isQuiet = qEnvironmentVariable("KESTRUNE_START") == QLatin1String("quiet");
  qunsetenv("KESTRUNE_START");
  return isQuiet;
}

// Replaces this process by a new run with the same arguments and environment. If the program's file is gone,
// as after an upgrade, the file that is still open is executed.
void restart(char** argv) {
  execv(QFile::encodeName(QCoreApplication::applicationFilePath()).constData(), argv);
  execv("/proc/self/exe", argv);
  std::perror("kestrune: can't start anew");
}

// On Wayland, Qt raises a window with the activation token in the environment. It is removed afterwards so
// that programs opened from here don't find it.
void openWith(const QString& activationToken) {
  constexpr const char* name = "XDG_ACTIVATION_TOKEN";
  const bool isUsable =
      !activationToken.isEmpty() && QGuiApplication::platformName().startsWith(QLatin1String("wayland"));
  if (isUsable) qputenv(name, activationToken.toUtf8());
  app->openMainWindow();
  if (isUsable) qunsetenv(name);
}

int run(int argc, char** argv) {
  // Blocks the signals; must come before any thread is started.
  platform::TerminationSignals signals;
  chooseQtPlatform();
  const bool isQuiet = startsQuietly();
  QApplication application(argc, argv);
  QApplication::setApplicationName(QStringLiteral("kestrune"));
  QApplication::setApplicationVersion(QStringLiteral(KESTRUNE_VERSION));
  QApplication::setDesktopFileName(QStringLiteral("org.kestrune.Kestrune"));
  QApplication::setQuitOnLastWindowClosed(false);

  using Request = desktop::SingleInstance::Request;
  using Start = desktop::SingleInstance::Start;
  const bool hasDisplay = ui::qt::KestruneApp::hasDisplay();
  const Start start = !hasDisplay ? Start::headless : isQuiet ? Start::quiet : Start::window;
  desktop::SingleInstance instance(
      [](Request request, const QString& activationToken) {
        if (app == nullptr) return;
        if (request == Request::settings) app->notifications().post(ui::openSettingsTabNotification);
        openWith(activationToken);
      },
      [] {
        if (app != nullptr) app->terminate();
      });
  switch (instance.claim(start)) {
    case desktop::SingleInstance::Outcome::first:
      break;
    case desktop::SingleInstance::Outcome::otherRuns:
      return EXIT_SUCCESS;
    case desktop::SingleInstance::Outcome::otherDoesNotAnswer:
      std::fputs("kestrune: already running, but it does not answer\n", stderr);
      return EXIT_FAILURE;
  }

  Assembly assembly;
  ui::qt::KestruneApp& kestrune = assembly.app;
  app = &kestrune;
  saveWhenDisplayIsLost();

  QSocketNotifier onSignal(signals.fd(), QSocketNotifier::Read);
  QObject::connect(&onSignal, &QSocketNotifier::activated, &onSignal, [&] {
    if (signals.consume()) kestrune.terminate();
  });

  if (start == Start::quiet) kestrune.openQuietly();
  if (start == Start::window) kestrune.openMainWindow();
  const int code = QApplication::exec();
  // Everything has been saved; a reading that hangs in a lane must not keep the process alive.
  std::fflush(nullptr);
  if (kestrune.wantsNewInstance()) {
    instance.release();
    restart(argv);
  }
  std::_Exit(code);
}

}  // namespace

int main(int argc, char** argv) {
  return run(argc, argv);
}
