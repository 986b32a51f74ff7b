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

ui::qt::KestruneApp* app = nullptr;  // while it runs

// Without a display the program samples all the same.
void chooseQtPlatform() {
  const auto isSet = [](const char* name) { return !qEnvironmentVariableIsEmpty(name); };
  if (isSet("DISPLAY") || isSet("WAYLAND_DISPLAY") || isSet("QT_QPA_PLATFORM")) return;
  std::fputs("kestrune: no display; running without a window\n", stderr);
  qputenv("QT_QPA_PLATFORM", "offscreen");
}

QtMessageHandler writeMessage = nullptr;

// Qt ends the process where it stands when the display is gone. On X that's an ordinary exit; on Wayland, one
// that runs no handlers, and its last warning is the only word of it.
void saveWhenTheDisplayIsGone() {
  std::atexit([] { app->saveDay(); });
  writeMessage = qInstallMessageHandler(nullptr);  // before any message can come
  qInstallMessageHandler([](QtMsgType type, const QMessageLogContext& context, const QString& text) {
    writeMessage(type, context, text);
    if (text.startsWith(QLatin1String("The Wayland connection"))) app->saveDay();
  });
}

// The session started it, not a person. What comes after, be it the next run or a program that is opened from
// here, doesn't inherit that.
bool startsQuietly() {
  const bool isQuiet = qEnvironmentVariable("KESTRUNE_START") == QLatin1String("quiet");
  qunsetenv("KESTRUNE_START");
  return isQuiet;
}

// This process becomes the next run, with the same arguments and environment. Where the program's file is
// gone, as after an upgrade, the one that is still open serves.
void startAnew(char** argv) {
  execv(QFile::encodeName(QCoreApplication::applicationFilePath()).constData(), argv);
  execv("/proc/self/exe", argv);
  std::perror("kestrune: can't start anew");
}

// On Wayland the toolkit brings a window forward with the token that it finds in the environment, where no
// other start of a program may find it afterwards.
void openWith(const QString& activationToken) {
  constexpr const char* name = "XDG_ACTIVATION_TOKEN";
  const bool isOfUse =
      !activationToken.isEmpty() && QGuiApplication::platformName().startsWith(QLatin1String("wayland"));
  if (isOfUse) qputenv(name, activationToken.toUtf8());
  app->openMainWindow();
  if (isOfUse) qunsetenv(name);
}

int run(int argc, char** argv) {
  // Blocks the signals, and must do so before any thread is started.
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
  saveWhenTheDisplayIsGone();

  QSocketNotifier onSignal(signals.fd(), QSocketNotifier::Read);
  QObject::connect(&onSignal, &QSocketNotifier::activated, &onSignal, [&] {
    if (signals.consume()) kestrune.terminate();
  });

  if (start == Start::quiet) kestrune.openQuietly();
  if (start == Start::window) kestrune.openMainWindow();
  const int code = QApplication::exec();
  // All that is worth keeping has been saved; a reading that hangs in some lane must not keep the process.
  std::fflush(nullptr);
  if (kestrune.wantsNewInstance()) {
    instance.release();
    startAnew(argv);
  }
  std::_Exit(code);
}

}  // namespace

int main(int argc, char** argv) {
  return run(argc, argv);
}
